#include "tests/output/output_fixture.h"

namespace mervane::tests {

namespace {

using Texts = std::vector<std::string>;
using Fills = std::vector<std::int32_t>;

class ClusterListing : public OutputTest {
 protected:
  static Plan sorting() {
    Plan plan = listingAlone();
    plan.sort = true;
    return plan;
  }
};

TEST_F(ClusterListing, SortMovesInputRowsWithTheCellsLeftOfThem) {
  fillExample();
  print(sorting());
  EXPECT_EQ(texts("A2:D6"), (Texts{"a", "1", "10", "100", "c", "4", "40", "400", "d", "7", "70", "700",  //
                                   "b", "2", "20", "200", "e", "6", "60", "600"}));
  EXPECT_EQ(texts("F2:F6"), (Texts{"1", "1", "1", "2", "2"}));
  EXPECT_EQ(texts("A1:D1"), (Texts{"Name", "Length", "Width", "Weight"}));
}

TEST_F(ClusterListing, SortPutsTheScratchColumnBackRowForRow) {
  fillExample();
  excel.fill("E2", {{"one", "right"}, {2.0, "of"}, {Variant(), "it"}, {"four", "all"}, {5.0, "stays"}});
  Plan plan = sorting();
  plan.output = "H2";
  print(plan);
  EXPECT_EQ(texts("E2:F6"), (Texts{"one", "right", "2", "of", "", "it", "four", "all", "5", "stays"}));
  EXPECT_EQ(texts("H2:H6"), (Texts{"1", "1", "1", "2", "2"}));
}

TEST_F(ClusterListing, SortOfInputInTheFirstColumnNeedsNoCellsToItsLeft) {
  excel.fill("A2", {{1.0, 10.0}, {2.0, 20.0}, {3.0, 30.0}});
  Plan plan = sorting();
  plan.input = "A2:B4";
  plan.result = {2, 1, 1};
  Recorder record(excel.object(), FakeSheet::nameOf);
  print(plan, record.object());
  EXPECT_EQ(texts("A2:B4"), (Texts{"2", "20", "3", "30", "1", "10"}));
  EXPECT_EQ(record.callsWith("Sort"), (Texts{"call A2:C4.Sort(C2:C4, 1)"}));
}

TEST_F(ClusterListing, SortTakesTheFirstRowAlong) {
  fillExample();
  Plan plan = sorting();
  plan.result = {2, 1, 1, 1, 1};
  print(plan);
  EXPECT_EQ(texts("A2:A6"), (Texts{"b", "c", "d", "e", "a"}));
}

TEST_F(ClusterListing, SortGoesThroughTheSheetInThisOrder) {
  excel.fill("B2", {{5.0}, {6.0}});
  Plan plan = sorting();
  plan.input = "B2:B3";
  plan.result = {2, 1};
  Recorder record(excel.object(), FakeSheet::nameOf);
  COutputFormatting output;
  set(output, plan, record.object());
  record.clear();
  output.PrintData();
  const Texts expected{// The sort range.
                       "get B2:B3.Column", "get B2:B3.Offset(0, -1)", "get B2:B3.Rows", "get B2:B3.Rows.Count",
                       "get B2:B3.Columns", "get B2:B3.Columns.Count", "get B2:B3.Column", "get A2:A3.Resize(2, 3)",
                       "get A2:C3.Columns", "get A2:C3.Columns.Count", "get B2:B3.Rows", "get B2:B3.Rows.Count",
                       // The numbers into the scratch column.
                       "get A2:C3.Cells(1, 3)", "get C2.Value", "get A2:C3.Cells(1, 3)", "put C2.Value = 2",  //
                       "get A2:C3.Cells(2, 3)", "get C3.Value", "get A2:C3.Cells(2, 3)", "put C3.Value = 1",
                       // The sort.
                       "get A2:C3.Columns(3)", "call A2:C3.Sort(C2:C3, 1)",
                       // The numbers back, the old contents to where they stood.
                       "get A2:C3.Cells(1, 3)", "get C2.Value", "get A2:C3.Cells(1, 3)", "put C2.Value = Empty",  //
                       "get A2:C3.Cells(2, 3)", "get C3.Value", "get A2:C3.Cells(2, 3)", "put C3.Value = Empty"};
  const auto begin = record.calls().begin() + 5;  // Behind the search for old charts.
  EXPECT_EQ(Texts(begin, begin + static_cast<std::ptrdiff_t>(expected.size())), expected);
}

TEST_F(ClusterListing, WithoutSortTheRowsStayPut) {
  fillExample();
  print(listingAlone());
  EXPECT_EQ(texts("A2:A6"), (Texts{"a", "b", "c", "d", "e"}));
  EXPECT_EQ(texts("F2:F6"), (Texts{"1", "2", "1", "1", "2"}));
}

TEST_F(ClusterListing, WithoutColorsEarlierFillsStay) {
  fillExample();
  excel.cell("F3").colorIndex = 7;
  excel.cell("B3").colorIndex = 8;
  print(listingAlone());
  EXPECT_EQ(fills("F2:F3"), (Fills{0, 7}));
  EXPECT_EQ(fills("B3"), (Fills{8}));
  EXPECT_FALSE(excel.cell("F2").pattern.has_value());
}

TEST_F(ClusterListing, InputRowsAreColoredInTheirOwnColumnsAlone) {
  fillExample();
  Plan plan = listingAlone();
  plan.colors = true;
  plan.output = "H2";
  print(plan);
  EXPECT_EQ(fills("A2:E3"), (Fills{0, 36, 36, 36, 0, 0, 50, 50, 50, 0}));
}

TEST_F(ClusterListing, MatrixOverwritesColumnsWithoutATest) {
  fillExample();
  excel.fill("F2", {{"a", "b", "c"}});
  Plan plan = listingAlone();
  plan.oneColumn = false;
  plan.clusters = 3;
  print(plan);
  EXPECT_EQ(texts("F1:I2"), (Texts{"Cluster 1", "Cluster 2", "Cluster 3", "", "1", "0", "0", ""}));
}

TEST_F(ClusterListing, MatrixInRowOneHasNoHeaders) {
  fillExample();
  Plan plan = listingAlone();
  plan.oneColumn = false;
  plan.output = "F1";
  print(plan);
  EXPECT_EQ(texts("F1:G2"), (Texts{"1", "0", "0", "1"}));
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(ClusterListing, OneColumnGoesThroughTheSheetInThisOrder) {
  Plan plan = listingAlone();
  plan.input = "B2:B3";
  plan.result = {1, 2};
  plan.colors = true;
  Recorder record(excel.object(), FakeSheet::nameOf);
  COutputFormatting output;
  set(output, plan, record.object());
  record.clear();
  output.PrintData();
  EXPECT_EQ(
      record.calls(),
      (Texts{"get ActiveWorkbook", "get ActiveWorkbook.ActiveSheet", "call Sheet1.ChartObjects",
             "get Sheet1.ChartObjects.NewEnum", "call Sheet1.ChartObjects.NewEnum.Next",
             // The listing.
             "get ReferenceStyle", "get Range(\"F2\")", "get F2.Cells(0, 1)", "put F1.Value = \"Clusters\"",
             "get F2.Cells(0, 1)", "get F1.Font", "put F1.Font.Bold = True",  //
             "get F2.Cells(1, 1)", "put F2.Value = 1", "get F2.Cells(1, 1)", "get F2.Interior",
             "put F2.Interior.Pattern = 1", "get F2.Interior", "put F2.Interior.ColorIndex = 36",  //
             "get F2.Cells(2, 1)", "put F3.Value = 2", "get F2.Cells(2, 1)", "get F3.Interior",
             "put F3.Interior.Pattern = 1", "get F3.Interior", "put F3.Interior.ColorIndex = 50",  //
             "get ActiveSheet", "get Sheet1.AutoFilterMode",
             // The input rows.
             "get B2:B3.Rows", "get B2:B3.Rows.Count",  //
             "get B2:B3.Cells(1, 1)", "get B2:B3.Columns", "get B2:B3.Columns.Count", "get B2.Resize(1, 1)",
             "get B2.Interior", "put B2.Interior.Pattern = 1", "get B2.Interior",
             "put B2.Interior.ColorIndex = 36",  //
             "get B2:B3.Cells(2, 1)", "get B2:B3.Columns", "get B2:B3.Columns.Count", "get B3.Resize(1, 1)",
             "get B3.Interior", "put B3.Interior.Pattern = 1", "get B3.Interior", "put B3.Interior.ColorIndex = 50"}));
}

TEST_F(ClusterListing, ManyColumnsGoThroughTheSheetInThisOrder) {
  Plan plan = listingAlone();
  plan.input = "B2:B2";
  plan.result = {2};
  plan.oneColumn = false;
  plan.colors = true;
  Recorder record(excel.object(), FakeSheet::nameOf);
  COutputFormatting output;
  set(output, plan, record.object());
  record.clear();
  output.PrintData();
  const Texts expected{"get ReferenceStyle",      "get Range(\"F2\")",  //
                       "get F2.Cells(0, 1)",      "put F1.Value = \"Cluster 1\"",
                       "get F2.Cells(0, 1)",      "get F1.Font",
                       "put F1.Font.Bold = True",  //
                       "get F2.Cells(0, 2)",      "put G1.Value = \"Cluster 2\"",
                       "get F2.Cells(0, 2)",      "get G1.Font",
                       "put G1.Font.Bold = True",  //
                       "get F2.Cells(1, 1)",      "put F2.Value = 0",
                       "get F2.Cells(1, 2)",      "put G2.Value = 1",  //
                       "get F2.Offset(0, 0)",     "get F2.Resize(1, 2)",
                       "get F2:G2.Interior",      "put F2:G2.Interior.Pattern = 1",
                       "get F2:G2.Interior",      "put F2:G2.Interior.ColorIndex = 50"};
  const auto begin = record.calls().begin() + 5;
  EXPECT_EQ(Texts(begin, begin + static_cast<std::ptrdiff_t>(expected.size())), expected);
}

TEST_F(ClusterListing, FilterIsSwitchedOnlyWhereItDiffersFromTheOption) {
  fillExample();
  for (const bool wanted : {false, true}) {
    for (const bool present : {false, true}) {
      Plan plan = listingAlone();
      plan.autofilter = wanted;
      for (const bool oneColumn : {true, false}) {
        excel.worksheet().autoFilterMode = present;
        excel.worksheet().autoFilterRange.clear();
        plan.oneColumn = oneColumn;
        print(plan);
        EXPECT_EQ(excel.worksheet().autoFilterMode, wanted);
        EXPECT_EQ(excel.worksheet().autoFilterRange, wanted == present ? "" : "F1");
      }
    }
  }
}

TEST_F(ClusterListing, FilterIsSwitchedWhereItsStateCannotBeRead) {
  fillExample();
  for (const bool wanted : {false, true}) {
    excel.worksheet().autoFilterRange.clear();
    Plan plan = listingAlone();
    plan.autofilter = wanted;
    FaultInjector host(excel.object(),
                       [](sheet::Access, sheet::member::Id id) { return id == sheet::member::AutoFilterMode; });
    print(plan, host.object());
    EXPECT_EQ(excel.worksheet().autoFilterRange, "F1");
  }
}

TEST_F(ClusterListing, FilterOverAListingInRowOneDoesNothing) {
  fillExample();
  Plan plan = listingAlone();
  plan.autofilter = true;
  plan.output = "F1";
  print(plan);
  EXPECT_FALSE(excel.worksheet().autoFilterMode);
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(ClusterListing, FillThatFailsHalfwaySetsTheOtherHalf) {
  fillExample();
  Plan plan = listingAlone();
  plan.colors = true;
  FaultInjector host(excel.object(), [](sheet::Access, sheet::member::Id id) { return id == sheet::member::Pattern; });
  print(plan, host.object());
  EXPECT_EQ(fills("F2:F3"), (Fills{36, 50}));
  EXPECT_FALSE(excel.cell("F2").pattern.has_value());
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(ClusterListing, RowThatCannotBeColoredLeavesTheOthersColored) {
  fillExample();
  Plan plan = listingAlone();
  plan.colors = true;
  plan.output = "H2";
  plan.result = {1, -2, 1, 1, 2};
  print(plan);
  // The listing raises at the negative number, the input rows pass over it.
  EXPECT_EQ(failuresShown(), 1U);
  machine.messageBox->shown.clear();
  machine.messageBox->answers = {Answer::ignore};
  print(plan);
  EXPECT_EQ(failuresShown(), 1U);
  EXPECT_EQ(fills("B2:B6"), (Fills{36, 0, 36, 36, 50}));
}

}  // namespace

}  // namespace mervane::tests
