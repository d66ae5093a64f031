#include "hosts/objects/range_cells.h"

#include <initializer_list>
#include <vector>

#include "tests/ground/raises.h"

namespace mervane::hosts {
namespace {

using View = RangeCells::View;
using sheet::CellArea;

/// C3:E4.
constexpr CellArea area{3, 3, 4, 5};

using Values = std::vector<Variant>;

CellArea cellAt(const Values& indexes) {
  return RangeCells{area}.cell(indexes).area;
}

void expectOffSheet(const std::function<RangeCells()>& member) {
  expectRaises(runtime::applicationDefined, [&] { static_cast<void>(member()); });
}

TEST(RangeCells, OneIndexCountsTheCellsRowByRowAndGoesOnOutside) {
  EXPECT_EQ(cellAt({Variant(1)}), (CellArea{3, 3, 3, 3}));
  EXPECT_EQ(cellAt({Variant(4)}), (CellArea{4, 3, 4, 3}));
  EXPECT_EQ(cellAt({Variant(9)}), (CellArea{5, 5, 5, 5}));
  EXPECT_EQ(cellAt({Variant(0)}), (CellArea{2, 5, 2, 5}));
  EXPECT_EQ(cellAt({Variant(-2)}), (CellArea{2, 3, 2, 3}));
}

TEST(RangeCells, TwoIndexesAreARowAndAColumnThatMayBeLetters) {
  EXPECT_EQ(cellAt({Variant(2), Variant(3)}), (CellArea{4, 5, 4, 5}));
  EXPECT_EQ(cellAt({Variant(0), Variant("b")}), (CellArea{2, 4, 2, 4}));
  expectRaises(runtime::wrongArgumentCount, [] { cellAt({Variant(1), Variant(1), Variant(1)}); });
}

TEST(RangeCells, AnItemIsARowOrAColumnWhereThatIsWhatTheCellsAreSeenAs) {
  const Values second{Variant(2)};
  const RangeCells row = RangeCells{area, View::rows}.item(second);
  EXPECT_EQ(row.area, (CellArea{4, 3, 4, 5}));
  EXPECT_EQ(row.view, View::rows);
  const RangeCells column = RangeCells{area, View::columns}.item(second);
  EXPECT_EQ(column.area, (CellArea{3, 4, 4, 4}));
  EXPECT_EQ(column.view, View::columns);
  const Values both{Variant(2), Variant(2)};
  EXPECT_EQ((RangeCells{area, View::rows}.item(both).area), (CellArea{4, 4, 4, 4}));
}

TEST(RangeCells, OffsetAndSizeStayWhereTheyAreLeftOutAndKeepTheView) {
  const RangeCells rows{area, View::rows};
  const Values onlyRight{Variant(Missing{}), Variant(2)};
  EXPECT_EQ(rows.offset(onlyRight).area, (CellArea{3, 5, 4, 7}));
  EXPECT_EQ(rows.offset(onlyRight).view, View::rows);
  EXPECT_EQ(rows.resize(onlyRight).area, (CellArea{3, 3, 4, 4}));
  EXPECT_EQ(rows.resize({}).area, area);
}

TEST(RangeCells, CellsThatAreNotOnTheSheetAreTheApplicationsFailure) {
  const RangeCells cells{area};
  const Values farAway{Variant(INT32_MAX), Variant(INT32_MAX)};
  const Values nothing{Variant(0)};
  expectOffSheet([&] { return cells.cell(farAway); });
  expectOffSheet([&] { return cells.offset(farAway); });
  expectOffSheet([&] { return cells.resize(farAway); });
  expectOffSheet([&] { return cells.resize(nothing); });
  const Values above{Variant(-2)};
  expectOffSheet([&] { return cells.row(above); });
  expectOffSheet([&] { return cells.column(above); });
}

TEST(RangeCells, EntireColumnsAreThoseOfTheSheet) {
  EXPECT_EQ(RangeCells{area}.entireColumns().area, (CellArea{1, 3, sheet::lastSheetRow, 5}));
  requireWholeColumns(RangeCells{area}.entireColumns().area);
  EXPECT_THROW(requireWholeColumns(area), Failure);
}

TEST(RangeCells, MoreCellsThanANumberTellsOverflow) {
  const CellArea all{1, 1, sheet::lastSheetRow, sheet::lastSheetColumn};
  EXPECT_EQ((RangeCells{all, View::columns}.shownCount()), sheet::lastSheetColumn);
  expectRaises(runtime::overflow, [&] { static_cast<void>(RangeCells{all}.shownCount()); });
}

/// The elements that the enumerator answers until it is empty.
std::vector<CellArea> enumerated(const RangeCells& cells) {
  std::vector<CellArea> areas;
  const sheet::ObjectRef enumerator = enumeratorOf(cells, [&](const RangeCells& one) {
    EXPECT_EQ(one.view, cells.view);
    areas.push_back(one.area);
    return Variant(true);
  });
  while (!enumerator->invoke(sheet::Access::call, sheet::member::Next, {}).isEmpty()) continue;
  return areas;
}

TEST(RangeCells, AreEnumeratedRowByRow) {
  EXPECT_EQ(
      enumerated({area}),
      (std::vector<CellArea>{{3, 3, 3, 3}, {3, 4, 3, 4}, {3, 5, 3, 5}, {4, 3, 4, 3}, {4, 4, 4, 4}, {4, 5, 4, 5}}));
  EXPECT_EQ(enumerated({area, View::rows}), (std::vector<CellArea>{{3, 3, 3, 5}, {4, 3, 4, 5}}));
  EXPECT_EQ(enumerated({area, View::columns}), (std::vector<CellArea>{{3, 3, 4, 3}, {3, 4, 4, 4}, {3, 5, 4, 5}}));
}

}  // namespace
}  // namespace mervane::hosts
