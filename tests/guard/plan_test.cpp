#include "guard/plan.h"

#include <gtest/gtest.h>

#include "tests/guard/made_sheet.h"

namespace mervane::guard {
namespace {

TEST(Plan, TheListingIsAsLongAsTheInputsAndHasAHeadingAboveIt) {
  EXPECT_EQ(listing(planForThem()), (CellArea{2, 6, 7, 6}));
  EXPECT_EQ(listingWithHeading(planForThem()), (CellArea{1, 6, 7, 6}));
}

TEST(Plan, AListingInManyColumnsHasOneForEachCluster) {
  Plan plan = planForThem();
  plan.oneColumn = false;
  plan.clusters = 4;
  EXPECT_EQ(listing(plan), (CellArea{2, 6, 7, 9}));
}

TEST(Plan, AListingInTheFirstRowHasNoHeading) {
  Plan plan = planForThem();
  plan.outputs.row = 1;
  EXPECT_EQ(listingWithHeading(plan), (CellArea{1, 6, 6, 6}));
}

TEST(Plan, FourBlocksAreAsWideAsTheInputsWithTheirLabelsAndTheWeightsTwoColumns) {
  EXPECT_EQ(statistics(planForThem()), (std::vector<CellArea>{{8, 2, 15, 4}, {16, 3, 17, 4}}));
}

TEST(Plan, BlocksThatAreLeftOutTakeNoRows) {
  Plan plan = planForThem();
  plan.averages = plan.maximums = false;
  EXPECT_EQ(statistics(plan), (std::vector<CellArea>{{8, 2, 11, 4}, {12, 3, 13, 4}}));
  plan.weightedAverages = plan.minimums = false;
  EXPECT_EQ(statistics(plan), (std::vector<CellArea>{{8, 3, 9, 4}}));
  plan.weights = false;
  EXPECT_TRUE(statistics(plan).empty());
}

TEST(Plan, SortingMovesEverythingFromTheFirstColumnOfTheSheetToTheOneBesideTheInputs) {
  EXPECT_EQ(sortedRows(planForThem()), (CellArea{2, 1, 7, 4}));
  EXPECT_EQ(scratchColumn(planForThem()), (CellArea{2, 4, 7, 4}));
}

TEST(Plan, AChartNeedsTheBlockThatItShows) {
  Plan plan = planForThem();
  plan.weightedAverages = false;
  EXPECT_TRUE(drawsCharts(plan));
  plan.weights = false;
  EXPECT_FALSE(drawsCharts(plan));
  plan.weightedAverages = true;
  EXPECT_TRUE(drawsCharts(plan));
  plan.charts = false;
  EXPECT_FALSE(drawsCharts(plan));
}

}  // namespace
}  // namespace mervane::guard
