#include "guard/counting_columns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace mervane::guard {
namespace {

using Column = std::vector<double>;

TEST(CountingColumns, WholeNumbersOneApartCountTheRowsWhereverTheyBegin) {
  EXPECT_TRUE(countsRows(Column{1, 2, 3}));
  EXPECT_TRUE(countsRows(Column{0, 1, 2, 3}));
  EXPECT_TRUE(countsRows(Column{2019, 2020, 2021, 2022}));
}

TEST(CountingColumns, MeasuredNumbersDoNot) {
  EXPECT_FALSE(countsRows(Column{1, 2, 4}));
  EXPECT_FALSE(countsRows(Column{1.5, 2.5, 3.5}));
  EXPECT_FALSE(countsRows(Column{3, 2, 1}));
  EXPECT_FALSE(countsRows(Column{5, 5, 5}));
  EXPECT_FALSE(countsRows(Column{}));
}

TEST(CountingColumns, OfTwoRowsNothingIsSaid) {
  EXPECT_FALSE(countsRows(Column{1, 2}));
}

TEST(CountingColumns, TenRowsAndMoreMayHaveBeenSorted) {
  EXPECT_TRUE(countsRows(Column{7, 1, 10, 3, 2, 9, 4, 8, 6, 5}));
  EXPECT_FALSE(countsRows(Column{7, 1, 3, 2, 9, 4, 8, 6, 5}));
  EXPECT_FALSE(countsRows(Column{7, 1, 10, 3, 2, 9, 4, 8, 6, 6}));
}

TEST(CountingColumns, TheWidestRunOfTheOthersIsTakenAndOfEqualsTheLeftmost) {
  const sheet::CellArea area{2, 1, 9, 6};
  const auto without = [&](std::vector<std::int32_t> columns) {
    return widestRun(area, [columns](std::int32_t column) { return std::ranges::count(columns, column) == 0; });
  };
  EXPECT_EQ(without({}), area);
  EXPECT_EQ(without({1}), (sheet::CellArea{2, 2, 9, 6}));
  EXPECT_EQ(without({6}), (sheet::CellArea{2, 1, 9, 5}));
  EXPECT_EQ(without({3}), (sheet::CellArea{2, 4, 9, 6}));
  EXPECT_EQ(without({3, 6}), (sheet::CellArea{2, 1, 9, 2}));
  EXPECT_EQ(without({1, 2, 3, 4, 5, 6}), std::nullopt);
}

}  // namespace
}  // namespace mervane::guard
