#include "guard/harms.h"

#include <gtest/gtest.h>

#include "tests/guard/made_sheet.h"

namespace mervane::guard {
namespace {

class Harms : public testing::Test {
 protected:
  MadeBook book = numbersInBAndC();
  Plan plan = planForThem();

  /// Expects one harm only, and gives it.
  Harm only() {
    const std::vector<Harm> harms = harmsOf(plan, book);
    EXPECT_EQ(harms.size(), 1U);
    for (const Harm& harm : harms) SCOPED_TRACE(harm.text);
    return harms.empty() ? Harm{} : harms.front();
  }
  void expect(HarmKind kind, Piece piece, bool isForbidden, const std::string& text) {
    const Harm harm = only();
    EXPECT_EQ(harm.kind, kind);
    EXPECT_EQ(harm.piece, piece);
    EXPECT_EQ(harm.isForbidden, isForbidden);
    EXPECT_EQ(harm.text, text);
  }
  void expectNone() {
    for (const Harm& harm : harmsOf(plan, book)) ADD_FAILURE() << harm.text;
  }
};

TEST_F(Harms, AFreePlaceIsNotHarmed) {
  expectNone();
}

TEST_F(Harms, CellsUnderTheInputsThatTheStatisticsWouldOverwriteAreListed) {
  book.data().cells[{8, 2}] = {"Total"};
  book.data().cells[{8, 3}] = {"7"};
  expect(HarmKind::cells, Piece::statistics, false,
         "the statistics would overwrite 2 cells of Data!B8:D15: B8 \"Total\", C8 \"7\"");
  EXPECT_EQ(only().count, 2);
}

TEST_F(Harms, CellsBesideTheWeightsAreNotHarmed) {
  book.data().cells[{16, 2}] = {"kept"};
  book.data().cells[{18, 3}] = {"kept too"};
  expectNone();
}

TEST_F(Harms, CellsThatTheListingWouldOverwriteAreListedWithItsHeading) {
  book.data().cells[{1, 6}] = {"Remark"};
  expect(HarmKind::cells, Piece::listing, false, "the listing would overwrite 1 cell of Data!F1:F7: F1 \"Remark\"");
}

TEST_F(Harms, OnlyTheFirstCellsAreNamedAndLongTextsAreCutAtACharacter) {
  const std::string longText = "123456789 123456789 123456789 123456789\xC3\xA9 and more";
  for (std::int32_t row = 2; row <= 7; ++row) book.data().cells[{row, 6}] = {row == 2 ? longText : "9"};
  EXPECT_EQ(only().text,
            "the listing would overwrite 6 cells of Data!F1:F7: F2 \"123456789 123456789 123456789 "
            "123456789\xC3\xA9\xE2\x80\xA6\", "
            "F3 \"9\", F4 \"9\", F5 \"9\", F6 \"9\", ...");
}

TEST_F(Harms, AChartWithoutATitleIsAboutToBeDeletedAndOthersAreNot) {
  book.data().facts.drawings = {{true, std::nullopt, {3, 8, 9, 12}},
                                {true, "Sales", {3, 8, 9, 12}},
                                {true, "Clusters weights", {3, 8, 9, 12}},
                                {false, std::nullopt, {3, 8, 9, 12}}};
  expect(HarmKind::chart, Piece::oldCharts, false, "the chart without a title at Data!H3:L9 would be deleted");
  // The charts of an earlier run go first, whether or not new ones are drawn.
  plan.charts = false;
  EXPECT_EQ(only().kind, HarmKind::chart);
}

TEST_F(Harms, AListingInsideTheInputsIsForbidden) {
  plan.outputs = {2, 3};
  const std::vector<Harm> harms = harmsOf(plan, book);
  ASSERT_FALSE(harms.empty());
  EXPECT_EQ(harms[0].kind, HarmKind::inputs);
  EXPECT_TRUE(harms[0].isForbidden);
  EXPECT_EQ(harms[0].text, "the listing at Data!C1:C7 would overwrite the inputs Data!B2:C7");
}

TEST_F(Harms, AListingWhoseHeadingAloneMeetsTheInputsIsForbidden) {
  plan.outputs = {8, 3};
  EXPECT_EQ(harmsOf(plan, book).at(0).kind, HarmKind::inputs);
}

TEST_F(Harms, AListingOfTheSamePlaceOnAnotherSheetIsNot) {
  static_cast<void>(book.sheets["Other"]);
  plan.outputSheet = "Other";
  plan.outputs = {2, 3};
  expectNone();
}

TEST_F(Harms, StatisticsThatWouldOverwriteTheListingAreTold) {
  plan.outputs = {4, 4};
  expect(HarmKind::listing, Piece::listing, false,
         "the statistics at Data!B8:D15 would overwrite the listing at Data!D3:D9");
}

TEST_F(Harms, CellsOfThePivotTableAreNeitherSortedNorOverwritten) {
  book.data().facts.pivotTables = {{"Pivot", {3, 1, 5, 1}}};
  expect(HarmKind::pivotTable, Piece::sorting, true,
         "sorting would move cells of the pivot table \"Pivot\" at Data!A3:A5");
  book.data().facts.pivotTables = {{"Pivot", {10, 4, 12, 9}}};
  expect(HarmKind::pivotTable, Piece::statistics, true,
         "the statistics would overwrite cells of the pivot table \"Pivot\" at Data!D10:I12");
  book.data().facts.pivotTables = {{"Pivot", {1, 6, 1, 9}}};
  EXPECT_EQ(only().piece, Piece::listing);
}

TEST_F(Harms, ATableThatHoldsTheInputsMayBeSortedAndAnotherOneMayNot) {
  book.data().facts.tables = {{"Own", {1, 1, 7, 3}}};
  expectNone();
  book.data().facts.tables = {{"Left", {1, 1, 7, 1}}};
  expect(HarmKind::table, Piece::sorting, true, "sorting would move cells of the table \"Left\" at Data!A1:A7");
  plan.sort = false;
  expectNone();
}

TEST_F(Harms, ATableBesideTheInputsIsNeverOverwritten) {
  book.data().facts.tables = {{"Right", {5, 6, 20, 9}}};
  expect(HarmKind::table, Piece::listing, true,
         "the listing would overwrite cells of the table \"Right\" at Data!F5:I20");
  book.data().facts.tables = {{"Under", {17, 1, 20, 4}}};
  EXPECT_EQ(only().piece, Piece::statistics);
}

TEST_F(Harms, TheTotalsOfTheTableThatIsClusteredAreNeverOverwritten) {
  book.data().facts.tables = {{"Own", {1, 2, 8, 3}}};
  expectNone();
  book.data().facts.tables[0].hasTotals = true;
  expect(HarmKind::table, Piece::statistics, true,
         "the statistics would overwrite the totals of the table \"Own\" at Data!B1:C8");
}

TEST_F(Harms, MergedCellsInTheSortedRowsAreForbidden) {
  book.data().merged = {{2, 1, 3, 1}};
  expect(HarmKind::merged, Piece::sorting, true, "sorting cannot move the merged cells Data!A2:A3");
  plan.sort = false;
  expectNone();
}

TEST_F(Harms, MergedCellsAreForbiddenWhereMoreThanTheirFirstIsWritten) {
  book.data().merged = {{3, 6, 4, 6}};
  expect(HarmKind::merged, Piece::listing, true, "the listing would write to cells that are merged into Data!F3:F4");
  // Of these the first one only.
  book.data().merged = {{3, 6, 3, 8}};
  expectNone();
  book.data().merged = {{7, 6, 9, 8}};
  expectNone();
  // Of these others only.
  book.data().merged = {{3, 5, 3, 8}};
  EXPECT_EQ(only().kind, HarmKind::merged);
  book.data().merged = {{1, 6, 2, 6}};
  EXPECT_EQ(only().kind, HarmKind::merged);
  // The heading alone does without.
  book.data().merged = {{1, 5, 1, 6}};
  expectNone();
}

TEST_F(Harms, ArrayFormulasAreNeitherSortedNorOverwritten) {
  book.data().arrays = {{3, 1, 4, 1}};
  expect(HarmKind::array, Piece::sorting, true, "sorting would tear apart the array formula in Data!A3:A4");
  book.data().arrays = {{6, 6, 9, 6}};
  expect(HarmKind::array, Piece::listing, true,
         "the listing would overwrite a part of the array formula in Data!F6:F9");
  book.data().arrays = {{9, 2, 10, 2}};
  EXPECT_EQ(only().piece, Piece::statistics);
}

TEST_F(Harms, FormulasInTheColumnThatSortingBorrowsWouldBecomeValues) {
  book.data().cells[{4, 4}] = {"7", true};
  expect(HarmKind::formulas, Piece::sorting, false,
         "sorting would turn formulas of Data!D2:D7 into their values, D4 first");
  plan.sort = false;
  expectNone();
}

TEST_F(Harms, AFormulaWithoutAValueInThatColumnIsForbidden) {
  book.data().cells[{4, 4}] = {"=A1", true, false};
  const std::vector<Harm> harms = harmsOf(plan, book);
  ASSERT_EQ(harms.size(), 2U);
  EXPECT_TRUE(harms[0].isForbidden);
  EXPECT_EQ(harms[0].text, "sorting needs the value of the formula in Data!D4, which was never computed");
}

TEST_F(Harms, TextsThatWouldBecomeFormulasInThatColumnAreTold) {
  book.data().cells[{4, 4}] = {"=x"};
  EXPECT_EQ(only().kind, HarmKind::formulas);
  EXPECT_FALSE(only().isForbidden);
}

TEST_F(Harms, AListingInThatColumnOverwritesItAnyway) {
  plan.outputs = {2, 4};
  book.data().cells[{4, 4}] = {"7", true};
  EXPECT_EQ(only().kind, HarmKind::cells);
}

TEST_F(Harms, LockedCellsOfAProtectedSheetAreForbidden) {
  book.data().locked = {{4, 6, 4, 6}};
  expect(HarmKind::protection, Piece::listing, true,
         "the listing would write to Data!F4, which is locked on a protected sheet");
  book.data().locked = {{9, 3, 9, 3}};
  EXPECT_EQ(only().piece, Piece::statistics);
  book.data().locked = {{3, 4, 3, 4}};
  EXPECT_EQ(only().piece, Piece::sorting);
}

TEST_F(Harms, EachThingThatAProtectedSheetDoesNotAllowIsNeededByOnePiece) {
  Protection& protection = book.data().facts.protection;
  protection = {.allowsSorting = false};
  expect(HarmKind::protection, Piece::sorting, true, "the sheet \"Data\" is protected and does not allow sorting");
  protection = {.allowsFormats = false};
  expect(HarmKind::protection, Piece::statistics, true,
         "the sheet \"Data\" is protected and does not allow changes of formats");
  protection = {.allowsColumnWidths = false};
  EXPECT_EQ(only().piece, Piece::statistics);
  protection = {.allowsCharts = false};
  expect(HarmKind::protection, Piece::newCharts, true, "the sheet \"Data\" is protected and does not allow charts");
  // Nor can old ones be deleted there.
  plan.charts = false;
  book.data().facts.drawings = {{true, std::nullopt, {3, 8, 9, 12}}};
  expectNone();
}

TEST_F(Harms, AFilterGoesWhereNoneIsWantedUnlessItLiesOverAListingOfOurs) {
  book.data().facts.filter = Filter{{1, 2, 7, 3}};
  expectNone();
  plan.autofilter = false;
  expect(HarmKind::filter, Piece::filter, false,
         "the filter over Data!B1:C7 would go, and the rows that it hides would be shown");
  book.data().facts.filter = Filter{{1, 2, 7, 6}};
  EXPECT_EQ(only().kind, HarmKind::filter);
  book.data().cells[{1, 6}] = {"Clusters"};
  const std::vector<Harm> harms = harmsOf(plan, book);
  ASSERT_EQ(harms.size(), 1U);
  EXPECT_EQ(harms[0].kind, HarmKind::cells);
}

TEST_F(Harms, TheArrowsOfATableGoWhereTheListingStandsUnderItsHeadings) {
  book.data().facts.tables = {{.name = "Own", .area = {1, 2, 7, 6}, .hasArrows = true}};
  expect(HarmKind::filter, Piece::filter, false,
         "the filter over Data!B1:F7 would go, and the rows that it hides would be shown");
  plan.autofilter = false;
  expectNone();
}

TEST_F(Harms, TheOtherSheetIsLookedAtWhereTheListingGoesThere) {
  book.sheets["Other"].cells[{3, 6}] = {"kept"};
  book.sheets["Other"].facts.filter = Filter{{1, 1, 9, 9}};
  plan.outputSheet = "Other";
  const std::vector<Harm> harms = harmsOf(plan, book);
  ASSERT_EQ(harms.size(), 2U);
  EXPECT_EQ(harms[0].text, "the listing would overwrite 1 cell of Other!F1:F7: F3 \"kept\"");
  EXPECT_EQ(harms[1].kind, HarmKind::filter);
  EXPECT_EQ(harms[1].sheet, "Other");
}

TEST_F(Harms, HiddenRowsCannotBeSorted) {
  book.data().facts.used = CellArea{1, 1, 7, 4};
  book.data().sorting.hiddenRow = 4;
  expect(HarmKind::hidden, Piece::sorting, true,
         "sorting cannot move row 4 of \"Data\", which a filter or the user has hidden");
  plan.sort = false;
  expectNone();
}

TEST_F(Harms, FormulasThatASortTearsApartAreNamed) {
  book.data().sorting.moved.add({"Data!A2", "=B3"});
  expect(HarmKind::formulas, Piece::sorting, false,
         "sorting moves formulas that name cells of other rows, which are other cells afterwards: Data!A2 \"=B3\"");
  for (const char* place : {"Data!A3", "Data!A4", "Data!A5"}) book.data().sorting.moved.add({place, "=B9"});
  EXPECT_TRUE(only().text.ends_with("Data!A2 \"=B3\", Data!A3 \"=B9\", Data!A4 \"=B9\", ...")) << only().text;
  book.data().sorting.moved = {};
  book.data().sorting.outside.add({"the name Best", "=Data!$B$3"});
  expect(HarmKind::formulas, Piece::sorting, false,
         "sorting puts other rows where formulas from outside look: the name Best \"=Data!$B$3\"");
  plan.sort = false;
  expectNone();
}

TEST_F(Harms, WhatIsForbiddenStandsFirst) {
  book.data().cells[{8, 2}] = {"Total"};
  book.data().arrays = {{6, 6, 9, 6}};
  book.data().facts.drawings = {{true, std::nullopt, {3, 8, 9, 12}}};
  const std::vector<Harm> harms = harmsOf(plan, book);
  ASSERT_EQ(harms.size(), 3U);
  EXPECT_TRUE(harms[0].isForbidden);
  EXPECT_FALSE(harms[1].isForbidden);
  EXPECT_TRUE(isForbidden(harms));
  EXPECT_FALSE(isForbidden({harms[1], harms[2]}));
}

}  // namespace
}  // namespace mervane::guard
