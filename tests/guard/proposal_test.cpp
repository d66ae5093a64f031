#include "guard/proposal.h"

#include <gtest/gtest.h>

#include "guard/harms.h"
#include "tests/guard/made_sheet.h"

namespace mervane::guard {
namespace {

class Proposals : public testing::Test {
 protected:
  MadeBook book = numbersInBAndC();
  Plan plan = planForThem();
};

TEST_F(Proposals, StandInTheFirstRowOfTheInputsOneColumnBehindTheLabels) {
  EXPECT_EQ(proposedOutputs(plan, book), (CellAddress{2, 6}));
}

TEST_F(Proposals, LeaveAColumnFreeBesideEverythingThatTheSheetHolds) {
  const auto column = [&] { return proposedOutputs(plan, book).value_or(CellAddress{}).column; };
  book.data().cells[{30, 7}] = {"far below"};
  EXPECT_EQ(column(), 9);
  book.data().facts.tables = {{"T", {40, 8, 50, 9}}};
  EXPECT_EQ(column(), 11);
  book.data().facts.pivotTables = {{"P", {40, 8, 50, 11}}};
  EXPECT_EQ(column(), 13);
  book.data().facts.drawings = {{false, std::nullopt, {1, 2, 9, 13}}};
  EXPECT_EQ(column(), 15);
  book.data().facts.filter = Filter{{1, 1, 5, 15}};
  EXPECT_EQ(column(), 17);
  book.data().merged = {{2, 17, 3, 18}};
  EXPECT_EQ(column(), 20);
  book.data().arrays = {{5, 20, 5, 22}, {5, 23, 5, 24}};
  EXPECT_EQ(column(), 26);
}

TEST_F(Proposals, LookForMergedCellsInTheRowsOfTheInputsWhereverThePlanPointsBefore) {
  plan.inputs = {100, 2, 105, 3};
  plan.outputs = {1, 1};
  book.data().merged = {{103, 5, 104, 7}};
  EXPECT_EQ(proposedOutputs(plan, book), (CellAddress{100, 9}));
  book.data().merged = {{1, 5, 2, 7}};
  EXPECT_EQ(proposedOutputs(plan, book), (CellAddress{100, 6}));
}

TEST_F(Proposals, EndWhereReferencesEnd) {
  book.data().cells[{1, 700}] = {"x"};
  EXPECT_EQ(proposedOutputs(plan, book), (CellAddress{2, 702}));
  book.data().cells[{1, 701}] = {"x"};
  EXPECT_EQ(proposedOutputs(plan, book), std::nullopt);
}

TEST_F(Proposals, LeaveAHarmlessPlanAsItIs) {
  const Plan harmless = harmlessPlan(plan, book).value();
  EXPECT_EQ(harmless.outputs, plan.outputs);
  EXPECT_TRUE(harmless.sort && harmless.averages && harmless.charts);
}

TEST_F(Proposals, MoveTheListingAway) {
  book.data().cells[{3, 6}] = {"kept"};
  const Plan harmless = sparingPlan(plan, book);
  EXPECT_TRUE(harmsOf(harmless, book).empty());
  EXPECT_EQ(harmless.outputs, (CellAddress{2, 8}));
  EXPECT_TRUE(harmless.averages);
}

TEST_F(Proposals, BringTheListingBackFromAnotherSheetWhereItWouldDoHarm) {
  book.sheets["Other"].facts.pivotTables = {{"P", {1, 6, 3, 6}}};
  plan.outputSheet = "Other";
  const Plan harmless = sparingPlan(plan, book);
  EXPECT_TRUE(harmsOf(harmless, book).empty());
  EXPECT_EQ(harmless.outputSheet, "Data");
}

TEST_F(Proposals, LeaveOutAsManyBlocksAsFit) {
  // Two blocks of two rows have room.
  book.data().cells[{12, 3}] = {"kept"};
  const Plan harmless = sparingPlan(plan, book);
  EXPECT_TRUE(harmsOf(harmless, book).empty());
  EXPECT_FALSE(harmless.averages || harmless.minimums || harmless.maximums);
  EXPECT_TRUE(harmless.weightedAverages && harmless.weights && harmless.charts && harmless.sort);
  book.data().cells[{8, 2}] = {"kept"};
  const Plan weightsAlone = sparingPlan(plan, book);
  EXPECT_TRUE(harmsOf(weightsAlone, book).empty());
  EXPECT_FALSE(weightsAlone.weightedAverages);
  EXPECT_TRUE(weightsAlone.weights);
}

TEST_F(Proposals, DoNotSortWhatSortingWouldTearApart) {
  book.data().merged = {{2, 1, 3, 1}};
  const Plan harmless = sparingPlan(plan, book);
  EXPECT_TRUE(harmsOf(harmless, book).empty());
  EXPECT_FALSE(harmless.sort);
}

TEST_F(Proposals, LookThroughTheFormulasOnceHoweverManyPiecesAreLeftOut) {
  book.data().cells[{8, 2}] = {"kept"};
  book.data().cells[{3, 6}] = {"kept"};
  const Plan harmless = sparingPlan(plan, book);
  EXPECT_TRUE(harmless.sort);
  EXPECT_FALSE(harmless.averages);
  EXPECT_EQ(book.sortingLooks, 1);
  book.data().sorting.moved.add({"Data!B3", "=B2"});
  EXPECT_FALSE(sparingPlan(plan, book).sort) << "the next proposal looks anew";
}

TEST_F(Proposals, KeepTheFilterOfTheSheet) {
  book.data().facts.filter = Filter{{1, 2, 7, 3}};
  plan.autofilter = false;
  const Plan harmless = sparingPlan(plan, book);
  EXPECT_TRUE(harmsOf(harmless, book).empty());
  EXPECT_TRUE(harmless.autofilter);
}

TEST_F(Proposals, CannotSaveAnUntitledChartButSpareAllElseAndWithConsentWhatIsForbidden) {
  book.data().facts.drawings = {{true, std::nullopt, {30, 2, 40, 3}}};
  book.data().facts.protection = {.allowsSorting = false};
  book.data().cells[{8, 2}] = {"kept"};
  const Plan spared = sparingPlan(plan, book);
  EXPECT_FALSE(spared.sort || spared.weightedAverages);
  ASSERT_EQ(harmsOf(spared, book).size(), 1U);
  EXPECT_EQ(harmsOf(spared, book)[0].kind, HarmKind::chart);
  EXPECT_FALSE(harmlessPlan(plan, book));
  const Plan consented = sparingPlan(plan, book, true);
  EXPECT_FALSE(consented.sort);
  EXPECT_TRUE(consented.weightedAverages);
  EXPECT_EQ(harmsOf(consented, book).size(), 2U);
}

TEST_F(Proposals, StayForbiddenWhereTheListingCanGoNowhere) {
  book.data().locked = {{1, 1, sheet::lastSheetRow, sheet::lastSheetColumn}};
  EXPECT_TRUE(isForbidden(harmsOf(sparingPlan(plan, book), book)));
}

}  // namespace
}  // namespace mervane::guard
