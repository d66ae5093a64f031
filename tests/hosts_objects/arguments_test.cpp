#include "hosts/objects/arguments.h"

#include <array>

#include "tests/ground/raises.h"

namespace mervane::hosts {
namespace {

TEST(Arguments, OneThatIsMissingIsNotGivenWhereverItStands) {
  const std::array<Variant, 2> arguments{Variant(Missing{}), Variant(7)};
  EXPECT_FALSE(isGiven(arguments, 0));
  EXPECT_TRUE(isGiven(arguments, 1));
  EXPECT_FALSE(isGiven(arguments, 2));
  expectRaises(runtime::argumentNotOptional, [&] { static_cast<void>(given(arguments, 0)); });
  expectRaises(runtime::argumentNotOptional, [&] { static_cast<void>(wholeArgument(arguments, 2)); });
}

TEST(Arguments, AreConvertedAsAutomationConvertsThem) {
  const std::array<Variant, 3> arguments{Variant(2.5), Variant("3"), Variant(true)};
  EXPECT_EQ(wholeArgument(arguments, 0), 2);
  EXPECT_EQ(wholeArgument(arguments, 1), 3);
  EXPECT_TRUE(truthArgument(arguments, 2));
  EXPECT_EQ(textArgument(arguments, 0), "2.5");
}

TEST(Arguments, AColumnIsANumberOrItsLetters) {
  const std::array<Variant, 4> arguments{Variant(5), Variant("ab"), Variant("12"), Variant("no column")};
  EXPECT_EQ(columnArgument(arguments, 0), 5);
  EXPECT_EQ(columnArgument(arguments, 1), 28);
  EXPECT_EQ(columnArgument(arguments, 2), 12);
  expectRaises(runtime::typeMismatch, [&] { static_cast<void>(columnArgument(arguments, 3)); });
}

TEST(Arguments, OnlyTheHostKnowsWhatStandsForCells) {
  const std::array<Variant, 2> arguments{Variant("cells"), Variant("none")};
  const sheet::SheetArea cells{2, {1, 2, 3, 4}};
  const AreaOf areaOf = [&](const Variant& value) {
    return value == Variant("cells") ? std::optional(cells) : std::nullopt;
  };
  EXPECT_EQ(areaArgument(arguments, 0, areaOf), cells);
  expectRaises(runtime::typeMismatch, [&] { static_cast<void>(areaArgument(arguments, 1, areaOf)); });
}

TEST(Arguments, MoreThanTheMemberHasAreRefused) {
  const std::array<Variant, 2> arguments{};
  atMost(arguments, 2);
  expectRaises(runtime::wrongArgumentCount, [&] { atMost(arguments, 1); });
}

}  // namespace
}  // namespace mervane::hosts
