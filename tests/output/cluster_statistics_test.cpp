#include <cmath>
#include <limits>

#include "tests/output/output_fixture.h"

namespace mervane::tests {

namespace {

using Texts = std::vector<std::string>;
using Fills = std::vector<std::int32_t>;
using Values = std::vector<Variant>;

class ClusterStatistics : public OutputTest {
 protected:
  /// One block alone.
  static Plan only(bool Plan::*block, const std::string& input, const std::vector<std::int32_t>& result,
                   std::int32_t clusters) {
    Plan plan = listingAlone();
    plan.*block = true;
    plan.input = input;
    plan.output = "H2";
    plan.result = result;
    plan.clusters = clusters;
    return plan;
  }
  void expectComponentFailureShown() {
    ASSERT_EQ(failuresShown(), 1U);
    const std::string& report = machine.messageBox->shown.front().text;
    EXPECT_NE(report.find("COutputFormatting component failure"), std::string::npos) << report;
    EXPECT_NE(report.find("-2147221404"), std::string::npos) << report;
  }
};

TEST_F(ClusterStatistics, OneClusterHasNoDeviationAndAllTheWeight) {
  fillExample();
  print({.result = {1, 1, 1, 1, 1}, .clusters = 1, .charts = false});
  EXPECT_EQ(excel.values("B7:D7"), (Values{4.0, 40.0, 400.0}));
  EXPECT_EQ(excel.values("B8:D8"), (Values{0.0, 0.0, 0.0}));
  EXPECT_EQ(excel.values("D11"), (Values{1.0}));
  EXPECT_FALSE(excel.worksheet().borders.contains("B7:E7 edge 12"));
  EXPECT_TRUE(excel.worksheet().borders.contains("B7:E7 edge 11"));
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(ClusterStatistics, ClusterWithoutMembersIsMarkedAndWeighsNothing) {
  fillExample();
  print({.result = {1, 3, 1, 1, 3}, .clusters = 3, .charts = false});
  for (const char* row : {"B8:D8", "B11:D11", "B14:D14", "B17:D17"}) {
    EXPECT_EQ(texts(row), (Texts{"=NA()", "=NA()", "=NA()"})) << row;
  }
  EXPECT_EQ(excel.cell("B11").numberFormat, "0.00%");
  EXPECT_EQ(excel.values("D20"), (Values{0.0}));
  EXPECT_EQ(texts("E8").front(), "Cluster 2 average");
  EXPECT_EQ(texts("E20").front(), "Cluster 2 weight (%)");
  EXPECT_EQ(fills("B8:E8"), (Fills{50, 50, 50, 50}));
}

TEST_F(ClusterStatistics, EachRowOfABlockBelongsToItsOwnCluster) {
  excel.fill("B2", {{1.0}, {10.0}, {3.0}, {20.0}, {4.0}});
  print({.input = "B2:B6", .result = {1, 3, 1, 3, 2}, .clusters = 3, .charts = false});
  EXPECT_EQ(excel.values("B7:B9"), (Values{2.0, 4.0, 15.0}));
  const double mean = 38.0 / 5.0;
  EXPECT_EQ(excel.values("B10:B12"), (Values{(2.0 - mean) / mean, (4.0 - mean) / mean, (15.0 - mean) / mean}));
  EXPECT_EQ(excel.values("B13:B15"), (Values{1.0, 4.0, 10.0}));
  EXPECT_EQ(excel.values("B16:B18"), (Values{3.0, 4.0, 20.0}));
  EXPECT_EQ(excel.values("B19:B21"), (Values{0.4, 0.2, 0.4}));
}

TEST_F(ClusterStatistics, DeviationIsAShareOfTheColumnsMean) {
  excel.fill("B2", {{1.0}, {2.0}, {6.0}});
  print(only(&Plan::weightedAverages, "B2:B4", {1, 1, 2}, 2));
  EXPECT_EQ(excel.values("B5:B6"), (Values{(1.5 - 3.0) / 3.0, (6.0 - 3.0) / 3.0}));
  EXPECT_EQ(texts("C5").front(), "Cluster 1 weighted average (%)");
}

TEST_F(ClusterStatistics, EmptyCellAddsNothingToTheSumAndOneToTheCount) {
  excel.fill("B2", {{4.0}, {Variant()}});
  Plan plan = only(&Plan::averages, "B2:B3", {1, 1}, 1);
  plan.minimums = true;
  print(plan);
  EXPECT_EQ(excel.values("B4:B5"), (Values{2.0, 0.0}));
}

TEST_F(ClusterStatistics, TextsThatReadAsNumbersAndBooleansCount) {
  excel.fill("B2", {{"12"}, {true}, {4.0}});
  Plan plan = only(&Plan::averages, "B2:B4", {1, 1, 1}, 1);
  plan.minimums = plan.maximums = true;
  print(plan);
  EXPECT_EQ(excel.values("B5:B7"), (Values{5.0, -1.0, 12.0}));
}

TEST_F(ClusterStatistics, TotalOfZeroHandsTheCellWhatTheDivisionGives) {
  excel.fill("B2", {{-1.0, 0.0}, {1.0, 0.0}});
  print(only(&Plan::weightedAverages, "B2:C3", {1, 2}, 2));
  EXPECT_EQ(excel.value("B4"), Variant(-std::numeric_limits<double>::infinity()));
  EXPECT_EQ(excel.value("B5"), Variant(std::numeric_limits<double>::infinity()));
  EXPECT_TRUE(std::isnan(*excel.value("C4").getIf<double>()));
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(ClusterStatistics, ValuesAtOrBeyondTheMarkCountAsNone) {
  constexpr double mark = 1.79769313486232E+307;
  excel.fill("B2", {{mark, std::nextafter(mark, 0.0), 1e308}});
  print(only(&Plan::minimums, "B2:D2", {1}, 1));
  EXPECT_EQ(texts("B3").front(), "=NA()");
  EXPECT_EQ(excel.value("C3"), Variant(std::nextafter(mark, 0.0)));
  EXPECT_EQ(texts("D3").front(), "=NA()");
  excel.fill("B2", {{-mark, std::nextafter(-mark, 0.0), -1e308}});
  print(only(&Plan::maximums, "B2:D2", {1}, 1));
  EXPECT_EQ(texts("B3").front(), "=NA()");
  EXPECT_EQ(excel.value("C3"), Variant(std::nextafter(-mark, 0.0)));
  EXPECT_EQ(texts("D3").front(), "=NA()");
}

TEST_F(ClusterStatistics, WithoutColorsBlocksAreGreyAndLabelsBold) {
  fillExample();
  Plan plan;
  plan.colors = plan.charts = false;
  print(plan);
  for (const char* cell : {"B7", "E8", "B9", "B11", "B14", "D15", "E16"}) {
    EXPECT_EQ(excel.cell(cell).color, 0xEAEAEA) << cell;
    EXPECT_EQ(excel.cell(cell).pattern, 1) << cell;
  }
  EXPECT_FALSE(excel.cell("C15").color.has_value());
  EXPECT_TRUE(excel.cell("E7").bold);
  EXPECT_TRUE(excel.cell("E16").bold);
  EXPECT_EQ(excel.worksheet().borders.size(), 5U * 6U);
}

TEST_F(ClusterStatistics, TheGreyIsLaidBehindItsPattern) {
  fillExample();
  Recorder record(excel.object(), FakeSheet::nameOf);
  print(only(&Plan::averages, "B2:D6", {1, 2, 1, 1, 2}, 2), record.object());
  EXPECT_EQ(record.callsWith("put B7:E8.Interior"),
            (Texts{"put B7:E8.Interior.Pattern = 1", "put B7:E8.Interior.Color = 15395562"}));
}

TEST_F(ClusterStatistics, WithColorsNoGreyIsLaid) {
  fillExample();
  print({});
  EXPECT_FALSE(excel.cell("B7").color.has_value());
}

TEST_F(ClusterStatistics, WeightsFitAllColumnsAndLeaveTheFirstOnesAlone) {
  fillExample();
  excel.fill("B7", {{"mine"}});
  print(only(&Plan::weights, "B2:D6", {1, 2, 1, 1, 2}, 2));
  EXPECT_EQ(texts("B7:E7"), (Texts{"mine", "", "0.6", "Cluster 1 weight (%)"}));
  EXPECT_EQ(excel.worksheet().fittedColumns, (std::set<std::int32_t>{2, 3, 4, 5}));
}

TEST_F(ClusterStatistics, TextInTheInputFailsTheAveragesAndLeavesTheColumnsBefore) {
  fillExample();
  excel.cell("C4").value = Variant("n/a");
  print(only(&Plan::averages, "B2:D6", {1, 2, 1, 1, 2}, 2));
  expectComponentFailureShown();
  EXPECT_EQ(texts("B7:E8"), (Texts{"4", "", "", "", "4", "", "", ""}));
}

TEST_F(ClusterStatistics, TextInTheInputFailsTheWeightedAverages) {
  fillExample();
  excel.cell("B4").value = Variant("n/a");
  print(only(&Plan::weightedAverages, "B2:D6", {1, 2, 1, 1, 2}, 2));
  expectComponentFailureShown();
  EXPECT_EQ(texts("B7:E8"), Texts(8, ""));
}

TEST_F(ClusterStatistics, TextInTheInputFailsTheExtremes) {
  fillExample();
  excel.cell("C4").value = Variant("n/a");
  for (bool Plan::*block : {&Plan::minimums, &Plan::maximums}) {
    machine.messageBox->shown.clear();
    machine.messageBox->answers = {Answer::abort};
    print(only(block, "B2:D6", {1, 2, 1, 1, 2}, 2));
    expectComponentFailureShown();
    // The column before the text stands.
    EXPECT_NE(texts("B7").front(), "");
    EXPECT_EQ(texts("C7:E7"), Texts(3, ""));
  }
}

TEST_F(ClusterStatistics, ClusterNumberOutsideOneToTheClustersFailsEveryBlock) {
  fillExample();
  for (bool Plan::*block :
       {&Plan::averages, &Plan::weightedAverages, &Plan::minimums, &Plan::maximums, &Plan::weights}) {
    for (const std::int32_t number : {0, 3}) {
      machine.messageBox->shown.clear();
      machine.messageBox->answers = {Answer::abort};
      print(only(block, "B2:D6", {1, 2, 1, number, 2}, 2));
      expectComponentFailureShown();
      EXPECT_EQ(texts("B7:E8"), Texts(8, "")) << number;
    }
  }
}

TEST_F(ClusterStatistics, SortingDoesNotChangeTheStatistics) {
  fillExample();
  Plan plan;
  plan.charts = false;
  print(plan);
  const Texts unsorted = texts("B7:E16");
  plan.sort = true;
  print(plan);
  EXPECT_EQ(texts("B7:E16"), unsorted);
}

TEST_F(ClusterStatistics, AveragesGoThroughTheSheetInThisOrder) {
  excel.fill("B2", {{5.0}});
  Plan plan = only(&Plan::averages, "B2", {1}, 2);
  plan.colors = true;
  Recorder record(excel.object(), FakeSheet::nameOf);
  COutputFormatting output;
  set(output, plan, record.object());
  output.PrintData();
  const auto begin = std::find(record.calls().begin(), record.calls().end(), "get Sheet1.AutoFilterMode") + 1;
  const Texts expected{
      "get B2.Rows", "get B2.Rows.Count", "get B2.Columns", "get B2.Columns.Count", "get B2.Item(1, 1)", "get B2.Value",
      "get B3:C3.Item(1, 1)", "put B3.Value = 5", "get B3:C3.Item(2, 1)", "put B4.Value = \"=NA()\"",
      // The labels.
      "get B3:C3.Item(1, 2)", "put C3.Value = \"Cluster 1 average\"", "get B3:C3.Item(1, 2)", "get C3.Font",
      "put C3.Font.Bold = True", "get B3:C3.Item(1, 1)", "get B3.Resize(1, 2)", "get B3:C3.Interior",
      "put B3:C3.Interior.Pattern = 1", "get B3:C3.Interior", "put B3:C3.Interior.ColorIndex = 36",
      "get B3:C3.Item(2, 2)", "put C4.Value = \"Cluster 2 average\"", "get B3:C3.Item(2, 2)", "get C4.Font",
      "put C4.Font.Bold = True", "get B3:C3.Item(2, 1)", "get B4.Resize(1, 2)", "get B4:C4.Interior",
      "put B4:C4.Interior.Pattern = 1", "get B4:C4.Interior", "put B4:C4.Interior.ColorIndex = 50",
      // The frame.
      "get B3:C3.Resize(2, 2)", "get B3:C4.Borders(7)", "put B3:C4.Borders(7).LineStyle = 1", "get B3:C4.Borders(7)",
      "put B3:C4.Borders(7).Weight = 2", "get B3:C4.Borders(7)", "put B3:C4.Borders(7).ColorIndex = -4105"};
  ASSERT_LT(static_cast<std::ptrdiff_t>(expected.size()), record.calls().end() - begin);
  EXPECT_EQ(Texts(begin, begin + static_cast<std::ptrdiff_t>(expected.size())), expected);
  Texts lines;
  for (const std::string& call : record.callsWith("LineStyle")) lines.push_back(call.substr(4, 17));
  EXPECT_EQ(lines, (Texts{"B3:C4.Borders(7).", "B3:C4.Borders(8).", "B3:C4.Borders(9).", "B3:C4.Borders(10)",
                          "B3:C4.Borders(11)", "B3:C4.Borders(12)"}));
  const Texts fitted{"get B3:C3.Columns", "get B3:C3.Columns.EntireColumn", "call B1:C1048576.AutoFit",
                     "get B3:C3.Offset(2, 0)"};
  const auto fit = std::find(record.calls().begin(), record.calls().end(), "get B3:C3.Columns.EntireColumn") - 1;
  EXPECT_EQ(Texts(fit, fit + 4), fitted);
}

TEST_F(ClusterStatistics, WeightsGoThroughTheSheetInThisOrder) {
  excel.fill("B2", {{5.0, 6.0}});
  Plan plan = only(&Plan::weights, "B2:C2", {1}, 1);
  plan.colors = true;
  Recorder record(excel.object(), FakeSheet::nameOf);
  COutputFormatting output;
  set(output, plan, record.object());
  output.PrintData();
  const auto begin = std::find(record.calls().begin(), record.calls().end(), "get Sheet1.AutoFilterMode") + 1;
  const Texts expected{"get B2:C2.Rows",
                       "get B2:C2.Rows.Count",
                       "get B3:D3.Columns",
                       "get B3:D3.Columns.Count",
                       "get B3:D3.Item(1, 2)",
                       "put C3.Value = 1",
                       "get B3:D3.Item(1, 2)",
                       "put C3.NumberFormat = \"0.00%\"",
                       "get B3:D3.Item(1, 3)",
                       "put D3.Value = \"Cluster 1 weight (%)\"",
                       "get B3:D3.Item(1, 3)",
                       "get D3.Font",
                       "put D3.Font.Bold = True",
                       "get B3:D3.Item(1, 2)",
                       "get C3.Resize(1, 2)",
                       "get C3:D3.Interior",
                       "put C3:D3.Interior.Pattern = 1",
                       "get C3:D3.Interior",
                       "put C3:D3.Interior.ColorIndex = 36",
                       "get B3:D3.Offset(0, 1)",
                       "get C3:E3.Resize(1, 2)"};
  EXPECT_EQ(Texts(begin, begin + static_cast<std::ptrdiff_t>(expected.size())), expected);
}

TEST_F(ClusterStatistics, NumberFormatIsSetBehindEachWeightedAverage) {
  excel.fill("B2", {{5.0}});
  Recorder record(excel.object(), FakeSheet::nameOf);
  COutputFormatting output;
  set(output, only(&Plan::weightedAverages, "B2", {2}, 2), record.object());
  output.PrintData();
  Texts puts;
  for (const std::string& call : record.callsWith("put B")) puts.push_back(call);
  ASSERT_GE(puts.size(), 4U);
  puts.resize(4);
  EXPECT_EQ(puts, (Texts{"put B3.Value = \"=NA()\"", "put B3.NumberFormat = \"0.00%\"", "put B4.Value = 0",
                         "put B4.NumberFormat = \"0.00%\""}));
}

}  // namespace

}  // namespace mervane::tests
