#include "hosts/objects/range_values.h"

#include "tests/ground/raises.h"

namespace mervane::hosts {
namespace {

const Variant notAvailable(ErrorValue{2042});

TEST(RangeValues, ATableIsCountedFromOneAndReadRowByRow) {
  const Variant table = tableOf({2, 3, 3, 5}, [](sheet::CellAddress at) { return Variant(at.row * 10 + at.column); });
  const AnyArray& values = table.array();
  EXPECT_EQ(values.dimensions(), 2);
  EXPECT_EQ(values.lowerBound(1), 1);
  EXPECT_EQ(values.lowerBound(2), 1);
  EXPECT_EQ(values.at(1, 1), Variant(23));
  EXPECT_EQ(values.at(1, 3), Variant(25));
  EXPECT_EQ(values.at(2, 1), Variant(33));
}

TEST(RangeValues, MoreCellsThanMemoryHoldsAreRefusedBeforeOneIsRead) {
  bool read = false;
  expectRaises(runtime::outOfMemory, [&] {
    static_cast<void>(tableOf({1, 1, sheet::lastSheetRow, sheet::lastSheetColumn}, [&](sheet::CellAddress) {
      read = true;
      return Variant();
    }));
  });
  EXPECT_FALSE(read);
}

TEST(AssignedArray, CellsWithoutAnElementBecomeNotAvailable) {
  Array<Variant> table({{0, 1}, {5, 6}});
  table.elements()[0] = Variant("a");
  table.elements()[3] = Variant("d");
  const Variant value(std::move(table));
  const AssignedArray assigned(value.array());
  EXPECT_EQ(assigned.at(0, 0), Variant("a"));
  EXPECT_EQ(assigned.at(1, 1), Variant("d"));
  EXPECT_EQ(assigned.at(2, 0), notAvailable);
  EXPECT_EQ(assigned.at(0, 2), notAvailable);
}

TEST(AssignedArray, OneRowIsTheSameForAllRows) {
  Array<Variant> row({{0, 1}});
  row.elements()[1] = Variant("b");
  const Variant value(std::move(row));
  const AssignedArray assigned(value.array());
  EXPECT_EQ(assigned.at(0, 1), Variant("b"));
  EXPECT_EQ(assigned.at(7, 1), Variant("b"));
  EXPECT_EQ(assigned.at(0, 2), notAvailable);
}

TEST(AssignedArray, OtherShapesDoNotMatch) {
  const Variant value(Array<Variant>({{1, 2}, {1, 2}, {1, 2}}));
  expectRaises(runtime::typeMismatch, [&] { static_cast<void>(AssignedArray(value.array())); });
}

}  // namespace
}  // namespace mervane::hosts
