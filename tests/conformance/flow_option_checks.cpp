#include "tests/conformance/flow_desk.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

using Texts = std::vector<std::string>;
using Fills = std::vector<std::int32_t>;
constexpr std::int32_t none = sheet::none;

FlowOptions listingAlone() {
  return {.charts = false,
          .averages = false,
          .weightedAverages = false,
          .minimums = false,
          .maximums = false,
          .weights = false,
          .colors = false};
}

void withEveryBlockOffOnlyTheListingIsWritten(FlowDesk& desk) {
  EXPECT_EQ(desk.clusterize(listingAlone()), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.texts("F1:F6"), (Texts{"Clusters", "1", "2", "1", "1", "2"}));
  EXPECT_EQ(desk.texts("A7:E12"), Texts(30, ""));
  EXPECT_EQ(desk.fills("A1:F6"), Fills(36, none));
  EXPECT_TRUE(desk.chartTitles().empty());
}

void blocksThatAreOffLeaveNoEmptyRows(FlowDesk& desk) {
  desk.clusterize({.weightedAverages = false, .minimums = false});
  EXPECT_EQ(desk.texts("E7:E13"), (Texts{"Cluster 1 average", "Cluster 2 average", "Cluster 1 maximum",
                                         "Cluster 2 maximum", "Cluster 1 weight (%)", "Cluster 2 weight (%)", ""}));
  EXPECT_EQ(desk.chartTitles(), Texts{"Clusters weights"});
}

void sortingMovesTheRowsWithTheCellsToTheirLeft(FlowDesk& desk) {
  EXPECT_EQ(desk.clusterize({.sort = true}), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.texts("F1:F6"), (Texts{"Clusters", "1", "1", "1", "2", "2"}));
  EXPECT_EQ(desk.texts("A1:D6"), (Texts{"Name", "Length", "Width", "Weight",  //
                                        "a",    "1",      "10",    "100",     //
                                        "c",    "4",      "40",    "400",     //
                                        "d",    "7",      "70",    "700",     //
                                        "b",    "2",      "20",    "200",     //
                                        "e",    "6",      "60",    "600"}));
  EXPECT_EQ(desk.fills("B2:B6"), (Fills{36, 36, 36, 50, 50}));
  EXPECT_EQ(desk.values("B7:D8"), (std::vector<Variant>{4.0, 40.0, 400.0, 4.0, 40.0, 400.0}));
  EXPECT_EQ(desk.values("D15:D16"), (std::vector<Variant>{Variant(0.6), Variant(0.4)}));
}

void sortingPutsTheColumnRightOfTheInputBackRowForRow(FlowDesk& desk) {
  desk.write("E2", Variant("two"));
  desk.write("E3", Variant(33.0));
  desk.write("E4", Variant(true));
  desk.write("E6", Variant("=NA()"));
  desk.write("G3", Variant("beside"));
  FlowOptions options = listingAlone();
  options.sort = true;
  EXPECT_EQ(desk.clusterize(options), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.values("E2:E6"),
            (std::vector<Variant>{Variant("two"), Variant(33.0), Variant(true), Variant(), Variant(ErrorValue{2042})}));
  EXPECT_EQ(desk.texts("G3"), Texts{"beside"});
  EXPECT_EQ(desk.texts("A2:A6"), (Texts{"a", "c", "d", "b", "e"}));
}

void inputInTheFirstColumnIsSortedWithTheScratchColumnAlone(FlowDesk& desk) {
  FlowOptions options = listingAlone();
  options.sort = true;
  options.input = "'Other''s'!A1:A3";
  options.output = "'Other''s'!C2";
  desk.clusterOf({{4, 2}, {6, 1}, {5, 1}});
  EXPECT_EQ(desk.clusterize(options), "CLOSE");
  // The cells are read from the sheet that the reference names; what is printed follows the references too.
  EXPECT_EQ(desk.texts("'Other''s'!A1:A3"), (Texts{"6", "5", "4"}));
  EXPECT_EQ(desk.texts("'Other''s'!C1:C4"), (Texts{"Clusters", "1", "1", "2"}));
}

void theFilterIsSwitchedOnAndOffOverTheListing(FlowDesk& desk) {
  FlowOptions options = listingAlone();
  options.autofilter = true;
  for (int run = 0; run < 2; ++run) {
    desk.clusterize(options);
    EXPECT_TRUE(desk.look().activeSheet().AutoFilterMode()) << "run " << run;
  }
  options.autofilter = false;
  for (int run = 0; run < 2; ++run) {
    desk.clusterize(options);
    EXPECT_FALSE(desk.look().activeSheet().AutoFilterMode()) << "run " << run;
  }
  desk.expectQuiet();
}

void withoutColoursTheBlocksAreGrey(FlowDesk& desk) {
  constexpr std::int32_t lightGrey = 0xEAEAEA;
  desk.clusterize({.colors = false});
  for (const char* cell : {"B7", "E8", "C12", "D15", "E16"}) {
    SCOPED_TRACE(cell);
    desk.look().expectShown(desk.look().range(cell).Interior(), member::Color, Variant(lightGrey));
  }
  EXPECT_EQ(desk.fills("A1:F6"), Fills(36, none));
  EXPECT_EQ(desk.fills("B15:C16"), Fills(4, none));
  desk.expectBold("E7:E16", true);
}

void withoutColoursEarlierFillsStay(FlowDesk& desk) {
  desk.clusterize();
  FlowOptions options = listingAlone();
  desk.clusterize(options);
  EXPECT_EQ(desk.fills("F2:F6"), (Fills{36, 50, 36, 36, 50}));
  EXPECT_EQ(desk.fills("B2:B6"), (Fills{36, 50, 36, 36, 50}));
}

void outputInRowOneLosesTheHeaderAndListsTheNumbers(FlowDesk& desk) {
  FlowOptions options = listingAlone();
  options.output = "F1";
  options.autofilter = true;
  EXPECT_EQ(desk.clusterize(options), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.texts("F1:F6"), (Texts{"1", "2", "1", "1", "2", ""}));
}

void anOutputOfManyCellsCountsByItsFirst(FlowDesk& desk) {
  FlowOptions options = listingAlone();
  options.output = "F2:Z400";
  EXPECT_EQ(desk.clusterize(options), "CLOSE");
  EXPECT_EQ(desk.texts("F1:G3"), (Texts{"Clusters", "", "1", "", "2", ""}));
}

void aListingInTheWayOfTheBlocksIsOverwritten(FlowDesk& desk) {
  FlowOptions options = listingAlone();
  options.averages = true;
  options.output = "E5";
  EXPECT_EQ(desk.clusterize(options), "CLOSE");
  EXPECT_EQ(desk.texts("E4:E9"), (Texts{"Clusters", "1", "2", "Cluster 1 average", "Cluster 2 average", "2"}));
}

void anEmptyClusterIsMarkedAndWeighsNothing(FlowDesk& desk) {
  EXPECT_EQ(desk.clusterize({.clusters = "3"}), "CLOSE");
  desk.expectQuiet();
  const Variant notAvailable(ErrorValue{2042});
  for (const char* row : {"B9:D9", "B12:D12", "B15:D15", "B18:D18"}) {
    EXPECT_EQ(desk.values(row), std::vector<Variant>(3, notAvailable)) << row;
  }
  EXPECT_EQ(desk.values("D19:D21"), (std::vector<Variant>{Variant(0.6), Variant(0.4), Variant(0.0)}));
  EXPECT_EQ(desk.texts("E9"), Texts{"Cluster 3 average"});
  EXPECT_EQ(desk.fills("B9:E9"), Fills(4, 38));
}

void coloursBeginAnewAfterSixteenClusters(FlowDesk& desk) {
  std::map<std::int32_t, std::int32_t> clusters;
  for (std::int32_t i = 1; i <= 17; ++i) {
    desk.write("B" + std::to_string(i + 1), Variant(i));
    desk.write("C" + std::to_string(i + 1), Variant(i * 2));
    clusters[i] = i;
  }
  desk.clusterOf(clusters);
  FlowOptions options = listingAlone();
  options.input = "B2:C18";
  options.clusters = "17";
  options.colors = true;
  EXPECT_EQ(desk.clusterize(options), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.fills("F2:F18"), (Fills{36, 50, 38, 39, 40, 10, 34, 16, 45, 41, 3, 5, 6, 14, 37, 35, 36}));
}

void aSecondRunWithLessLeavesTheTailOfTheFirst(FlowDesk& desk) {
  desk.clusterize();
  FlowOptions options = listingAlone();
  options.averages = true;
  desk.clusterize(options);
  EXPECT_EQ(desk.texts("E7:E9"), (Texts{"Cluster 1 average", "Cluster 2 average", "Cluster 1 weighted average (%)"}));
  EXPECT_EQ(desk.texts("E16"), Texts{"Cluster 2 weight (%)"});
  EXPECT_TRUE(desk.chartTitles().empty()) << "charts of an earlier run go in any case";
}

void emptyCellsAndTruthsCountAsNumbers(FlowDesk& desk) {
  desk.write("C3", Variant());
  desk.write("C6", Variant(true));
  FlowOptions options = listingAlone();
  options.averages = true;
  EXPECT_EQ(desk.clusterize(options), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.values("C8"), std::vector<Variant>{Variant(-0.5)}) << "an empty cell is 0 and a truth is -1";
}

void theBuiltInNetworkFindsTheTwoGroups(FlowDesk& desk) {
  const double lengths[] = {1.0, 9.0, 1.5, 8.5, 1.2};
  for (int i = 0; i < 5; ++i) {
    const std::string row = std::to_string(i + 2);
    desk.write("B" + row, Variant(lengths[i]));
    desk.write("C" + row, Variant(lengths[i] * 10.0));
    desk.write("D" + row, Variant(lengths[i] * 100.0));
  }
  desk.useBuiltInNetwork();
  EXPECT_EQ(desk.clusterize({.sort = true}), "CLOSE");
  desk.expectQuiet();
  const Texts numbers = desk.texts("F2:F6");
  const bool threeFirst = numbers == Texts{"1", "1", "1", "2", "2"};
  EXPECT_TRUE(threeFirst || numbers == (Texts{"1", "1", "2", "2", "2"}));
  EXPECT_EQ(desk.texts("A2:A6"), threeFirst ? (Texts{"a", "c", "e", "b", "d"}) : (Texts{"b", "d", "a", "c", "e"}));
}

}  // namespace

std::vector<FlowCheck> flowOptionChecks() {
  return {
      {"WithEveryBlockOffOnlyTheListingIsWritten", withEveryBlockOffOnlyTheListingIsWritten},
      {"BlocksThatAreOffLeaveNoEmptyRows", blocksThatAreOffLeaveNoEmptyRows},
      {"SortingMovesTheRowsWithTheCellsToTheirLeft", sortingMovesTheRowsWithTheCellsToTheirLeft},
      {"SortingPutsTheColumnRightOfTheInputBackRowForRow", sortingPutsTheColumnRightOfTheInputBackRowForRow},
      {"InputInTheFirstColumnIsSortedWithTheScratchColumnAlone",
       inputInTheFirstColumnIsSortedWithTheScratchColumnAlone},
      {"TheFilterIsSwitchedOnAndOffOverTheListing", theFilterIsSwitchedOnAndOffOverTheListing},
      {"WithoutColoursTheBlocksAreGrey", withoutColoursTheBlocksAreGrey},
      {"WithoutColoursEarlierFillsStay", withoutColoursEarlierFillsStay},
      {"OutputInRowOneLosesTheHeaderAndListsTheNumbers", outputInRowOneLosesTheHeaderAndListsTheNumbers},
      {"AnOutputOfManyCellsCountsByItsFirst", anOutputOfManyCellsCountsByItsFirst},
      {"AListingInTheWayOfTheBlocksIsOverwritten", aListingInTheWayOfTheBlocksIsOverwritten},
      {"AnEmptyClusterIsMarkedAndWeighsNothing", anEmptyClusterIsMarkedAndWeighsNothing},
      {"ColoursBeginAnewAfterSixteenClusters", coloursBeginAnewAfterSixteenClusters},
      {"ASecondRunWithLessLeavesTheTailOfTheFirst", aSecondRunWithLessLeavesTheTailOfTheFirst},
      {"EmptyCellsAndTruthsCountAsNumbers", emptyCellsAndTruthsCountAsNumbers},
      {"TheBuiltInNetworkFindsTheTwoGroups", theBuiltInNetworkFindsTheTwoGroups},
  };
}

}  // namespace mervane::tests
