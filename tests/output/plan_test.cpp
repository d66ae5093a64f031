#include "tests/output/output_fixture.h"

namespace mervane::tests {

namespace {

using Texts = std::vector<std::string>;
using Fills = std::vector<std::int32_t>;

class OutputPlan : public OutputTest {};

TEST_F(OutputPlan, WorkedExampleStandsCellByCell) {
  fillExample();
  print({});
  EXPECT_EQ(failuresShown(), 0U);
  // The listing.
  EXPECT_EQ(texts("F1:F6"), (Texts{"Clusters", "1", "2", "1", "1", "2"}));
  EXPECT_TRUE(excel.cell("F1").bold);
  EXPECT_FALSE(excel.cell("F2").bold);
  // The averages.
  EXPECT_EQ(excel.values("B7:D8"), (std::vector<Variant>{4.0, 40.0, 400.0, 4.0, 40.0, 400.0}));
  EXPECT_EQ(texts("E7:E8"), (Texts{"Cluster 1 average", "Cluster 2 average"}));
  EXPECT_TRUE(excel.cell("E7").bold);
  EXPECT_EQ(excel.cell("B7").numberFormat, "");
  // The weighted averages: the mean of every column equals those of both clusters.
  EXPECT_EQ(excel.values("B9:D10"), std::vector<Variant>(6, Variant(0.0)));
  EXPECT_EQ(texts("E9:E10"), (Texts{"Cluster 1 weighted average (%)", "Cluster 2 weighted average (%)"}));
  EXPECT_EQ(excel.cell("B9").numberFormat, "0.00%");
  EXPECT_EQ(excel.cell("D10").numberFormat, "0.00%");
  EXPECT_EQ(excel.cell("E9").numberFormat, "");
  // The extremes.
  EXPECT_EQ(excel.values("B11:D12"), (std::vector<Variant>{1.0, 10.0, 100.0, 2.0, 20.0, 200.0}));
  EXPECT_EQ(texts("E11:E12"), (Texts{"Cluster 1 minimum", "Cluster 2 minimum"}));
  EXPECT_EQ(excel.values("B13:D14"), (std::vector<Variant>{7.0, 70.0, 700.0, 6.0, 60.0, 600.0}));
  EXPECT_EQ(texts("E13:E14"), (Texts{"Cluster 1 maximum", "Cluster 2 maximum"}));
  // The weights, in the last two columns alone.
  EXPECT_EQ(excel.values("B15:D16"),
            (std::vector<Variant>{Variant(), Variant(), Variant(3.0 / 5.0), Variant(), Variant(), Variant(2.0 / 5.0)}));
  EXPECT_EQ(texts("E15:E16"), (Texts{"Cluster 1 weight (%)", "Cluster 2 weight (%)"}));
  EXPECT_EQ(excel.cell("D16").numberFormat, "0.00%");
  EXPECT_EQ(texts("B17:E17"), (Texts{"", "", "", ""}));
}

TEST_F(OutputPlan, WorkedExampleIsFilledByCluster) {
  fillExample();
  print({});
  EXPECT_EQ(fills("F1:F6"), (Fills{0, 36, 50, 36, 36, 50}));
  for (const char* row : {"B7:E7", "B9:E9", "B11:E11", "B13:E13"}) EXPECT_EQ(fills(row), Fills(4, 36)) << row;
  for (const char* row : {"B8:E8", "B10:E10", "B12:E12", "B14:E14"}) EXPECT_EQ(fills(row), Fills(4, 50)) << row;
  EXPECT_EQ(fills("B15:E16"), (Fills{0, 0, 36, 36, 0, 0, 50, 50}));
  EXPECT_EQ(fills("A2:D6"), (Fills{0, 36, 36, 36, 0, 50, 50, 50, 0, 36, 36, 36, 0, 36, 36, 36, 0, 50, 50, 50}));
  EXPECT_EQ(excel.cell("B7").pattern, 1);
}

TEST_F(OutputPlan, WorkedExampleIsBorderedAndFitted) {
  fillExample();
  print({});
  auto& borders = excel.worksheet().borders;
  for (const char* block : {"B7:E8", "B9:E10", "B11:E12", "B13:E14", "D15:E16"}) {
    for (int edge = sheet::edgeLeft; edge <= sheet::insideHorizontal; ++edge) {
      auto& line = borders[std::string(block) + " edge " + std::to_string(edge)];
      EXPECT_EQ(line[sheet::member::LineStyle], 1) << block << " " << edge;
      EXPECT_EQ(line[sheet::member::Weight], edge < sheet::insideVertical ? 2 : 1) << block << " " << edge;
      EXPECT_EQ(line[sheet::member::ColorIndex], -4105) << block << " " << edge;
    }
  }
  EXPECT_EQ(borders.size(), 5U * 6U);
  EXPECT_EQ(excel.worksheet().fittedColumns, (std::set<std::int32_t>{2, 3, 4, 5}));
}

TEST_F(OutputPlan, WorkedExampleHasItsTwoChartsBesideTheListing) {
  fillExample();
  print({});
  ASSERT_EQ(excel.charts().size(), 2U);
  EXPECT_EQ(excel.chart("Clusters profiles")->source, "B9:D10 by 1");
  EXPECT_EQ(excel.chart("Clusters weights")->source, "D15:D16 by 2");
  const FakeShape& weights = excel.shape("Clusters weights");
  EXPECT_EQ(weights.top, 12.75);      // the top of F2
  EXPECT_EQ(weights.left, 6 * 48.0);  // the right edge of column F
  EXPECT_EQ(weights.width, 350.0);
  EXPECT_EQ(weights.height, 200.0);
  const FakeShape& profiles = excel.shape("Clusters profiles");
  EXPECT_EQ(profiles.top, 212.75);
  EXPECT_EQ(profiles.left, 6 * 48.0);
  EXPECT_EQ(profiles.width, 350.0);
  EXPECT_EQ(profiles.height, 200.0);
}

TEST_F(OutputPlan, WorkedExampleWithManyColumnsIsAMatrixWithFilledRows) {
  fillExample();
  print({.oneColumn = false});
  EXPECT_EQ(texts("F1:G1"), (Texts{"Cluster 1", "Cluster 2"}));
  EXPECT_TRUE(excel.cell("G1").bold);
  EXPECT_EQ(texts("F2:G6"), (Texts{"1", "0", "0", "1", "1", "0", "1", "0", "0", "1"}));
  EXPECT_EQ(fills("F2:G6"), (Fills{36, 36, 50, 50, 36, 36, 36, 36, 50, 50}));
  EXPECT_EQ(excel.shape("Clusters weights").left, 7 * 48.0);
}

TEST_F(OutputPlan, AllSwitchesOffPrintsTheListingAndStillDeletesOldCharts) {
  fillExample();
  excel.addChart("Clusters weights");
  print(listingAlone());
  EXPECT_EQ(texts("F1:F6"), (Texts{"Clusters", "1", "2", "1", "1", "2"}));
  EXPECT_EQ(texts("B7:E8"), Texts(8, ""));
  EXPECT_TRUE(excel.charts().empty());
  EXPECT_EQ(fills("B2:F6"), Fills(25, 0));
}

TEST_F(OutputPlan, OutputInRowOneLosesTheHeaderAndListsTheNumbers) {
  fillExample();
  print({.output = "F1"});
  EXPECT_EQ(texts("F1:F5"), (Texts{"1", "2", "1", "1", "2"}));
  EXPECT_EQ(fills("F1:F5"), (Fills{36, 50, 36, 36, 50}));
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(OutputPlan, WithoutWeightedAveragesOnlyTheWeightsChartIsMade) {
  fillExample();
  print({.weightedAverages = false});
  ASSERT_EQ(excel.charts().size(), 1U);
  EXPECT_EQ(excel.shape("Clusters weights").top, 12.75);
  // The blocks close up.
  EXPECT_EQ(texts("E7:E14"),
            (Texts{"Cluster 1 average", "Cluster 2 average", "Cluster 1 minimum", "Cluster 2 minimum",
                   "Cluster 1 maximum", "Cluster 2 maximum", "Cluster 1 weight (%)", "Cluster 2 weight (%)"}));
}

TEST_F(OutputPlan, TwoBlocksOffInTheMiddleLeaveNoEmptyRows) {
  fillExample();
  print({.weightedAverages = false, .minimums = false});
  EXPECT_EQ(texts("E7:E13"), (Texts{"Cluster 1 average", "Cluster 2 average", "Cluster 1 maximum", "Cluster 2 maximum",
                                    "Cluster 1 weight (%)", "Cluster 2 weight (%)", ""}));
}

TEST_F(OutputPlan, SixteenthClusterTakesTheFirstTableEntryAndTheSeventeenthBeginsAnew) {
  std::vector<std::int32_t> result;
  for (std::int32_t k = 1; k <= 18; ++k) result.push_back(k);
  print({.input = "B2:B19", .output = "F2", .result = result, .clusters = 18});
  EXPECT_EQ(fills("F2:F19"), (Fills{36, 50, 38, 39, 40, 10, 34, 16, 45, 41, 3, 5, 6, 14, 37, 35, 36, 50}));
}

TEST_F(OutputPlan, OutputOfManyCellsCountsByItsFirstCell) {
  fillExample();
  Plan plan = listingAlone();
  plan.output = "F2:H9";
  print(plan);
  EXPECT_EQ(texts("F1:F6"), (Texts{"Clusters", "1", "2", "1", "1", "2"}));
  EXPECT_EQ(texts("G1:G6"), Texts(6, ""));
}

TEST_F(OutputPlan, ListingInTheWayOfTheBlocksIsOverwritten) {
  fillExample();
  Plan plan = listingAlone();
  plan.output = "E5";
  plan.averages = true;
  print(plan);
  // The third and fourth number of the listing gave way to the labels of the averages.
  EXPECT_EQ(texts("E4:E9"), (Texts{"Clusters", "1", "2", "Cluster 1 average", "Cluster 2 average", "2"}));
}

TEST_F(OutputPlan, SecondRunWithLessLeavesTheTailOfTheFirst) {
  fillExample();
  print({});
  print({.result = {1, 1, 1, 1, 1}, .clusters = 1, .weightedAverages = false});
  EXPECT_EQ(texts("E7:E11"), (Texts{"Cluster 1 average", "Cluster 1 minimum", "Cluster 1 maximum",
                                    "Cluster 1 weight (%)", "Cluster 1 minimum"}));
  EXPECT_EQ(texts("E16").front(), "Cluster 2 weight (%)");
  EXPECT_EQ(excel.charts().size(), 1U);
}

TEST_F(OutputPlan, RunningTwiceLeavesTwoCharts) {
  fillExample();
  print({});
  print({});
  EXPECT_EQ(excel.charts().size(), 2U);
}

TEST_F(OutputPlan, ASecondPrintDataPrintsBelowTheFirst) {
  fillExample();
  Plan plan = listingAlone();
  plan.averages = true;
  COutputFormatting output;
  set(output, plan, excel.object());
  output.PrintData();
  output.PrintData();
  EXPECT_EQ(texts("E7:E11"),
            (Texts{"Cluster 1 average", "Cluster 2 average", "Cluster 1 average", "Cluster 2 average", ""}));
}

TEST_F(OutputPlan, DefaultsAreThoseOfAFreshObject) {
  fillExample();
  COutputFormatting output;
  output.ExcelApplication(excel.application());
  output.Clusters(2);
  output.result(resultOf({1, 2, 1, 1, 2}));
  output.OutputCells("F2");
  output.TotalRange("B2:D6");
  output.InputRange("B2:D6");
  output.PrintData();
  // One column, colours, no weighted averages and so no profiles chart, neither sorted nor filtered.
  EXPECT_EQ(texts("F1:F6"), (Texts{"Clusters", "1", "2", "1", "1", "2"}));
  EXPECT_EQ(texts("E7:E14"),
            (Texts{"Cluster 1 average", "Cluster 2 average", "Cluster 1 minimum", "Cluster 2 minimum",
                   "Cluster 1 maximum", "Cluster 2 maximum", "Cluster 1 weight (%)", "Cluster 2 weight (%)"}));
  EXPECT_EQ(fills("B7").front(), 36);
  ASSERT_EQ(excel.charts().size(), 1U);
  EXPECT_EQ(excel.charts().front()->title(), "Clusters weights");
  EXPECT_FALSE(excel.worksheet().autoFilterMode);
}

TEST_F(OutputPlan, WeightSwitchArrivesAsAVariant) {
  fillExample();
  COutputFormatting output;
  Plan plan = listingAlone();
  set(output, plan, excel.object());
  output.CalculateClusterWeight(Variant("True"));
  output.PrintData();
  EXPECT_EQ(texts("E7").front(), "Cluster 1 weight (%)");
  EXPECT_THROW(output.CalculateClusterWeight(Variant("perhaps")), Failure);
}

TEST_F(OutputPlan, SortDoesNotReachTheCallersResult) {
  fillExample();
  const Variant result = resultOf({2, 1, 1, 2, 1});
  COutputFormatting output;
  Plan plan = listingAlone();
  plan.sort = true;
  set(output, plan, excel.object());
  output.result(result);
  output.PrintData();
  EXPECT_EQ(texts("F2:F6"), (Texts{"1", "1", "1", "2", "2"}));
  EXPECT_EQ(result.array().at(1), Variant(std::int32_t{2}));
  EXPECT_EQ(result.array().at(2), Variant(std::int32_t{1}));
}

TEST_F(OutputPlan, ResultRefusesWhatIsNoArrayOfNumbers) {
  COutputFormatting output;
  EXPECT_THROW(output.result(Variant(1.0)), Failure);
  EXPECT_THROW(output.result(Variant(Array<std::string>({{1, 1}}))), Failure);
  for (const Bounds second : {Bounds{1, 1}, Bounds{1, 0}}) {
    try {
      output.result(Variant(Array<std::int32_t>({{1, 1}, second})));
      ADD_FAILURE() << "nothing was raised";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.description(), "Type mismatch");
    }
  }
}

TEST_F(OutputPlan, TotalAndOutputAreConvertedFromR1C1AndInputIsNot) {
  excel.referenceStyle = sheet::referenceStyleR1C1;
  excel.convertFormula = [](const std::string& text) {
    return Variant(text == "R2C6" ? "[Book1]Sheet1!F2" : "[Book1]Sheet1!B2:D6");
  };
  fillExample();
  COutputFormatting output;
  output.ExcelApplication(excel.application());
  output.Clusters(2);
  output.result(resultOf({1, 2, 1, 1, 2}));
  output.OutputCells("R2C6");
  output.TotalRange("R2C2:R6C4");
  EXPECT_EQ(failuresShown(), 0U);
  EXPECT_THROW(output.InputRange("R2C2:R6C4"), Failure);
  output.InputRange("B2:D6");
  output.PrintData();
  EXPECT_EQ(failuresShown(), 0U);
  EXPECT_EQ(texts("F2").front(), "1");
  EXPECT_EQ(texts("E7").front(), "Cluster 1 average");
}

TEST_F(OutputPlan, InputOnAnotherSheetIsPrintedThere) {
  excel.addWorksheet("Data");
  excel.activeSheet = 1;
  fillExample();
  excel.activeSheet = 0;
  print({.input = "Data!B2:D6"});
  EXPECT_EQ(texts("F1:F2"), (Texts{"Clusters", "1"}));
  excel.activeSheet = 1;
  EXPECT_EQ(texts("E7").front(), "Cluster 1 average");
  // The charts are made where the data are, and placed only on the active sheet.
  EXPECT_EQ(excel.charts().size(), 2U);
  EXPECT_EQ(excel.shape("Clusters weights").width, 100.0);
}

}  // namespace

}  // namespace mervane::tests
