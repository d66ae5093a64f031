#include "tests/conformance/flow_desk.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

using Texts = std::vector<std::string>;
using Fills = std::vector<std::int32_t>;
constexpr std::int32_t none = sheet::none;

void theWorkedExampleStandsCellByCell(FlowDesk& desk) {
  EXPECT_EQ(desk.clusterize(), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.texts("F1:F7"), (Texts{"Clusters", "1", "2", "1", "1", "2", ""}));
  EXPECT_EQ(desk.values("F2"), std::vector<Variant>{Variant(1.0)});
  EXPECT_EQ(desk.values("B7:D8"), (std::vector<Variant>{4.0, 40.0, 400.0, 4.0, 40.0, 400.0}));
  EXPECT_EQ(desk.texts("E7:E8"), (Texts{"Cluster 1 average", "Cluster 2 average"}));
  EXPECT_EQ(desk.values("B9:D10"), std::vector<Variant>(6, Variant(0.0)));
  EXPECT_EQ(desk.texts("E9:E10"), (Texts{"Cluster 1 weighted average (%)", "Cluster 2 weighted average (%)"}));
  EXPECT_EQ(desk.values("B11:D12"), (std::vector<Variant>{1.0, 10.0, 100.0, 2.0, 20.0, 200.0}));
  EXPECT_EQ(desk.texts("E11:E12"), (Texts{"Cluster 1 minimum", "Cluster 2 minimum"}));
  EXPECT_EQ(desk.values("B13:D14"), (std::vector<Variant>{7.0, 70.0, 700.0, 6.0, 60.0, 600.0}));
  EXPECT_EQ(desk.texts("E13:E14"), (Texts{"Cluster 1 maximum", "Cluster 2 maximum"}));
  EXPECT_EQ(desk.values("B15:D16"),
            (std::vector<Variant>{Variant(), Variant(), Variant(0.6), Variant(), Variant(), Variant(0.4)}));
  EXPECT_EQ(desk.texts("E15:E16"), (Texts{"Cluster 1 weight (%)", "Cluster 2 weight (%)"}));
  EXPECT_EQ(desk.texts("A17:G17"), Texts(7, ""));
  EXPECT_EQ(desk.texts("A1:D2"), (Texts{"Name", "Length", "Width", "Weight", "a", "1", "10", "100"}));
}

void theWorkedExampleIsFilledByCluster(FlowDesk& desk) {
  desk.clusterize();
  EXPECT_EQ(desk.fills("F1:F7"), (Fills{none, 36, 50, 36, 36, 50, none}));
  for (const char* row : {"B7:E7", "B9:E9", "B11:E11", "B13:E13"}) EXPECT_EQ(desk.fills(row), Fills(4, 36)) << row;
  for (const char* row : {"B8:E8", "B10:E10", "B12:E12", "B14:E14"}) EXPECT_EQ(desk.fills(row), Fills(4, 50)) << row;
  EXPECT_EQ(desk.fills("B15:E16"), (Fills{none, none, 36, 36, none, none, 50, 50}));
  EXPECT_EQ(desk.fills("A2:E3"), (Fills{none, 36, 36, 36, none, none, 50, 50, 50, none}));
  EXPECT_EQ(desk.fills("B4:D6"), (Fills{36, 36, 36, 36, 36, 36, 50, 50, 50}));
  EXPECT_EQ(desk.fills("A1:E1"), Fills(5, none));
  desk.look().expectShown(desk.look().range("B7").Interior(), member::Pattern, Variant(sheet::patternSolid));
}

void theWorkedExampleHasBoldLabelsAndPercentages(FlowDesk& desk) {
  desk.clusterize();
  desk.expectBold("F1", true);
  desk.expectBold("F2:F6", false);
  desk.expectBold("E7:E16", true);
  desk.expectBold("B7:D16", false);
  for (const char* cell : {"B9", "D10", "D15", "D16"}) {
    desk.look().expectShown(desk.look().range(cell), member::NumberFormat, Variant("0.00%"));
  }
  for (const char* cell : {"B7", "B11", "B13", "F2", "E9", "C15"}) {
    EXPECT_FALSE(desk.look().shown(desk.look().range(cell), member::NumberFormat) == Variant("0.00%")) << cell;
  }
}

void theWorkedExampleIsBorderedBlockByBlock(FlowDesk& desk) {
  desk.clusterize();
  for (const char* block : {"B7:E8", "B9:E10", "B11:E12", "B13:E14", "D15:E16"}) {
    for (std::int32_t edge = sheet::edgeLeft; edge <= sheet::insideHorizontal; ++edge) {
      SCOPED_TRACE(std::string(block) + " line " + std::to_string(edge));
      const sheet::Border line = desk.look().range(block).Borders(edge);
      desk.look().expectShown(line, member::LineStyle, Variant(sheet::lineContinuous));
      desk.look().expectShown(line, member::Weight,
                              Variant(edge < sheet::insideVertical ? sheet::weightThin : sheet::weightHairline));
      desk.look().expectShown(line, member::ColorIndex, Variant(sheet::automatic));
    }
  }
  const auto lineOf = [&](const char* cell, std::int32_t edge) {
    return desk.look().shown(desk.look().range(cell).Borders(edge), member::LineStyle);
  };
  EXPECT_EQ(lineOf("B16", sheet::edgeLeft), Variant(sheet::none)) << "beside the weights there is no block";
  EXPECT_EQ(lineOf("F3", sheet::edgeLeft), Variant(sheet::none)) << "the listing has no lines";
}

void theColumnsOfTheBlocksAreFittedToTheirTexts(FlowDesk& desk) {
  const double before = desk.look().range("E1").Width();
  const double listing = desk.look().range("F1").Width();
  desk.clusterize();
  EXPECT_GT(desk.look().range("E1").Width(), before + 40.0);
  EXPECT_NEAR(desk.look().range("F1").Width(), listing, desk.look().tolerance());
}

void theWorkedExampleHasItsTwoChartsBesideTheListing(FlowDesk& desk) {
  desk.clusterize();
  EXPECT_EQ(desk.chartTitles(), (Texts{"Clusters profiles", "Clusters weights"}));
  const sheet::Range listing = desk.look().range("F2:F6");
  const auto expectPlace = [&](const char* title, double top) {
    SCOPED_TRACE(title);
    const sheet::Shape shape = desk.shape(title);
    desk.look().expectShown(shape, member::Top, Variant(top));
    desk.look().expectShown(shape, member::Left, Variant(listing.Left() + listing.Width()));
    desk.look().expectShown(shape, member::Width, Variant(350.0));
    desk.look().expectShown(shape, member::Height, Variant(200.0));
  };
  expectPlace("Clusters weights", listing.Top());
  expectPlace("Clusters profiles", listing.Top() + 200.0);
}

void theMatrixTakesAColumnForEachCluster(FlowDesk& desk) {
  EXPECT_EQ(desk.clusterize({.oneColumn = false}), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.texts("F1:G1"), (Texts{"Cluster 1", "Cluster 2"}));
  desk.expectBold("F1:G1", true);
  EXPECT_EQ(desk.values("F2:G3"), (std::vector<Variant>{1.0, 0.0, 0.0, 1.0}));
  EXPECT_EQ(desk.texts("F4:G6"), (Texts{"1", "0", "1", "0", "0", "1"}));
  EXPECT_EQ(desk.fills("F2:G6"), (Fills{36, 36, 50, 50, 36, 36, 36, 36, 50, 50}));
  const sheet::Range matrix = desk.look().range("F2:G6");
  desk.look().expectShown(desk.shape("Clusters weights"), member::Left, Variant(matrix.Left() + matrix.Width()));
}

void theScreenIsOnAgainAndTheSelectionOnTheOutputCell(FlowDesk& desk) {
  desk.clusterize();
  desk.look().expectShown(desk.look().application(), member::ScreenUpdating, Variant(true));
  EXPECT_EQ(desk.look().host().selection(), "F2");
}

void theWorkedExampleIsThereAfterTheFileIsOpenedAgain(FlowDesk& desk) {
  desk.clusterize();
  desk.look().host().reopen();
  EXPECT_EQ(desk.texts("F1:F7"), (Texts{"Clusters", "1", "2", "1", "1", "2", ""}));
  EXPECT_EQ(desk.values("B7:D7"), (std::vector<Variant>{4.0, 40.0, 400.0}));
  EXPECT_EQ(desk.fills("E14:F16"), (Fills{50, none, 36, none, 50, none}));
  EXPECT_EQ(desk.fills("B3:D4"), (Fills{50, 50, 50, 36, 36, 36}));
  desk.expectBold("E7:E16", true);
  desk.look().expectShown(desk.look().range("D15"), member::NumberFormat, Variant("0.00%"));
  desk.look().expectShown(desk.look().range("B7:E8").Borders(sheet::insideVertical), member::Weight,
                          Variant(sheet::weightHairline));
  EXPECT_EQ(desk.chartTitles(), (Texts{"Clusters profiles", "Clusters weights"}));
  desk.look().expectShown(desk.shape("Clusters profiles"), member::Width, Variant(350.0));
}

}  // namespace

std::vector<FlowCheck> workedExampleChecks() {
  return {
      {"TheWorkedExampleStandsCellByCell", theWorkedExampleStandsCellByCell},
      {"TheWorkedExampleIsFilledByCluster", theWorkedExampleIsFilledByCluster},
      {"TheWorkedExampleHasBoldLabelsAndPercentages", theWorkedExampleHasBoldLabelsAndPercentages},
      {"TheWorkedExampleIsBorderedBlockByBlock", theWorkedExampleIsBorderedBlockByBlock},
      {"TheColumnsOfTheBlocksAreFittedToTheirTexts", theColumnsOfTheBlocksAreFittedToTheirTexts},
      {"TheWorkedExampleHasItsTwoChartsBesideTheListing", theWorkedExampleHasItsTwoChartsBesideTheListing},
      {"TheMatrixTakesAColumnForEachCluster", theMatrixTakesAColumnForEachCluster},
      {"TheScreenIsOnAgainAndTheSelectionOnTheOutputCell", theScreenIsOnAgainAndTheSelectionOnTheOutputCell},
      {"TheWorkedExampleIsThereAfterTheFileIsOpenedAgain", theWorkedExampleIsThereAfterTheFileIsOpenedAgain, true},
  };
}

}  // namespace mervane::tests
