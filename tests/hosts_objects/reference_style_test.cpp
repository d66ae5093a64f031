#include "hosts/objects/reference_style.h"

#include <vector>

#include "tests/ground/raises.h"

namespace mervane::hosts {
namespace {

using Values = std::vector<Variant>;

/// Seen from B2, where an argument stands for C3.
Variant converted(const Values& arguments) {
  return convertFormula(
      arguments,
      [] {
        return sheet::CellAddress{2, 2};
      },
      [](const Variant& value) {
        return value == Variant("C3") ? std::optional(sheet::SheetArea{0, {3, 3, 3, 3}}) : std::nullopt;
      });
}

TEST(ReferenceStyle, OnlyTheTwoStylesCanBeAssigned) {
  EXPECT_EQ(referenceStyle(Values{Variant(styleA1)}), styleA1);
  EXPECT_EQ(referenceStyle(Values{Variant(styleR1C1)}), styleR1C1);
  expectRaises(runtime::applicationDefined, [] { static_cast<void>(referenceStyle(Values{Variant(2)})); });
}

TEST(ConvertFormula, RelativeReferencesAreSeenFromTheActiveCellOrTheOneGiven) {
  const Variant to(styleA1);
  const Variant from(styleR1C1);
  EXPECT_EQ(converted({Variant("=R[1]C"), from, to}), Variant("=B3"));
  EXPECT_EQ(converted({Variant("=R[1]C"), from, to, Variant(Missing{}), Variant("C3")}), Variant("=C4"));
  EXPECT_EQ(converted({Variant("=$B$3"), to, from}), Variant("=R3C2"));
  expectRaises(runtime::typeMismatch, [&] {
    converted({Variant("=R1C1"), from, to, Variant(Missing{}), Variant("no cells")});
  });
}

TEST(ConvertFormula, ToTheSameStyleAFormulaStaysAsItIs) {
  EXPECT_EQ(converted({Variant("=R[1]C"), Variant(styleR1C1)}), Variant("=R[1]C"));
}

TEST(ConvertFormula, AReferenceOffTheSheetIsAnError) {
  EXPECT_EQ(converted({Variant("=R[-2]C"), Variant(styleR1C1), Variant(styleA1)}), Variant(ErrorValue{2015}));
}

TEST(ConvertFormula, UnknownStylesAndForcedKindsOfReferenceAreRefused) {
  expectRaises(runtime::applicationDefined, [] { converted({Variant("=A1"), Variant(3)}); });
  expectRaises(runtime::applicationDefined, [] { converted({Variant("=A1"), Variant(styleA1), Variant(3)}); });
  expectRaises(runtime::applicationDefined, [] {
    converted({Variant("=A1"), Variant(styleA1), Variant(styleR1C1), Variant(1)});
  });
}

}  // namespace
}  // namespace mervane::hosts
