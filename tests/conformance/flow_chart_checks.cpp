#include "tests/conformance/flow_desk.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

using Texts = std::vector<std::string>;

/// The category texts of a series.
Texts categoriesOf(FlowDesk& desk, const sheet::Series& series) {
  Texts texts;
  const Variant values = desk.look().shown(series, member::XValues);
  if (!values.isArray()) return texts;
  const AnyArray& array = values.array();
  for (std::int32_t i = array.lowerBound(1); i <= array.upperBound(1); ++i) {
    const Variant one = array.at(i);
    const auto* text = one.getIf<std::string>();
    texts.push_back(text == nullptr ? "(no text)" : *text);
  }
  return texts;
}

void theProfilesAreALineForEachClusterOverTheHeaderRow(FlowDesk& desk) {
  desk.clusterize();
  const sheet::Chart chart = desk.chart("Clusters profiles");
  desk.look().expectShown(chart, member::ChartType, Variant(sheet::chartLineWithMarkers));
  ASSERT_EQ(chart.SeriesCollection().Count(), 2);
  EXPECT_NE(chart.SeriesCollection(1).Formula().find("$B$9:$D$9"), std::string::npos);
  EXPECT_NE(chart.SeriesCollection(2).Formula().find("$B$10:$D$10"), std::string::npos);
  desk.look().expectShown(chart.SeriesCollection(1), member::Name, Variant("Cluster 1"));
  desk.look().expectShown(chart.SeriesCollection(2), member::Name, Variant("Cluster 2"));
  EXPECT_EQ(categoriesOf(desk, chart.SeriesCollection(1)), (Texts{"Length", "Width", "Weight"}));
}

void theWeightsAreOneSeriesOfLabelledColumns(FlowDesk& desk) {
  desk.clusterize();
  const sheet::Chart chart = desk.chart("Clusters weights");
  desk.look().expectShown(chart, member::ChartType, Variant(sheet::chartColumnClustered));
  ASSERT_EQ(chart.SeriesCollection().Count(), 1);
  EXPECT_NE(chart.SeriesCollection(1).Formula().find("$D$15:$D$16"), std::string::npos);
  EXPECT_EQ(categoriesOf(desk, chart.SeriesCollection(1)), (Texts{"Cluster 1 weight (%)", "Cluster 2 weight (%)"}));
  EXPECT_FALSE(chart.HasLegend());
}

void theValuesStandBesideTheColumns(FlowDesk& desk) {
  desk.clusterize({.weightedAverages = false});
  EXPECT_EQ(desk.chartTitles(), Texts{"Clusters weights"});
  EXPECT_TRUE(desk.look().host().showsDataLabels());
}

void linesAndColumnsTakeTheColoursOfTheirClusters(FlowDesk& desk) {
  desk.clusterize();
  const sheet::Chart profiles = desk.chart("Clusters profiles");
  for (const auto& [index, color] : {std::pair(1, 36), std::pair(2, 50)}) {
    SCOPED_TRACE(index);
    const sheet::Series series = profiles.SeriesCollection(index);
    desk.look().expectShown(series.Border(), member::ColorIndex, Variant(color));
    desk.look().expectShown(series.Border(), member::Weight, Variant(sheet::weightMedium));
    desk.look().expectShown(series, member::MarkerForegroundColorIndex, Variant(color));
    desk.look().expectShown(series, member::MarkerSize, Variant(5));
    desk.look().expectShown(series, member::Smooth, Variant(false));
  }
  std::vector<std::int32_t> colors{36, 50};
  std::size_t at = 0;
  sheet::forEach<sheet::Point>(desk.chart("Clusters weights").SeriesCollection(1).Points(),
                               [&](const sheet::Point& point) {
                                 ASSERT_LT(at, colors.size());
                                 desk.look().expectShown(point.Interior(), member::ColorIndex, Variant(colors[at++]));
                               });
  EXPECT_EQ(at, 2U);
}

void bothChartsWearTheHousesDress(FlowDesk& desk) {
  desk.clusterize();
  Walk& look = desk.look();
  for (const char* title : {"Clusters profiles", "Clusters weights"}) {
    SCOPED_TRACE(title);
    const sheet::Chart chart = desk.chart(title);
    look.expectShown(chart.ChartArea().Interior(), member::ColorIndex, Variant(17));
    look.expectShown(chart.PlotArea().Interior(), member::ColorIndex, Variant(24));
    look.expectShown(chart.PlotArea().Border(), member::ColorIndex, Variant(1));
    look.expectShown(chart.ChartTitle().Font(), member::Name, Variant("Arial"));
    look.expectShown(chart.ChartTitle().Font(), member::Size, Variant(12));
    look.expectShown(chart.ChartTitle().Font(), member::Bold, Variant(true));
    look.expectShown(chart.ChartTitle().Font(), member::ColorIndex, Variant(6));
    const sheet::Axis categories = chart.Axes(sheet::axisCategory, sheet::axisGroupPrimary);
    const sheet::Axis values = chart.Axes(sheet::axisValue, sheet::axisGroupPrimary);
    look.expectShown(categories.TickLabels().Font(), member::ColorIndex, Variant(11));
    look.expectShown(categories, member::HasMajorGridlines, Variant(true));
    look.expectShown(values, member::HasMajorGridlines, Variant(true));
    look.expectShown(values, member::HasMinorGridlines, Variant(false));
    look.expectShown(values.MajorGridlines().Border(), member::ColorIndex, Variant(48));
    look.expectShown(categories.MajorGridlines().Border(), member::LineStyle, Variant(sheet::lineDotted));
    EXPECT_LE(chart.PlotArea().Width(), 350.0 + look.tolerance());
  }
  const sheet::Legend legend = desk.chart("Clusters profiles").Legend();
  look.expectShown(legend.Font(), member::Size, Variant(8));
  look.expectShown(legend.Interior(), member::ColorIndex, Variant(24));
}

void aSecondRunMakesTheChartsAnew(FlowDesk& desk) {
  desk.clusterize({.sort = true});
  desk.clusterOf({{1, 2}, {2, 1}, {4, 2}, {7, 2}, {6, 1}});
  EXPECT_EQ(desk.clusterize({.output = "H2", .sort = true}), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.chartTitles(), (Texts{"Clusters profiles", "Clusters weights"}));
  const sheet::Range listing = desk.look().range("H2:H6");
  desk.look().expectShown(desk.shape("Clusters weights"), member::Left, Variant(listing.Left() + listing.Width()));
  EXPECT_EQ(desk.texts("A2:A6"), (Texts{"b", "e", "a", "c", "d"}));
  EXPECT_EQ(desk.texts("H1:H6"), (Texts{"Clusters", "1", "1", "2", "2", "2"}));
}

void withoutChartsThoseOfTheRunBeforeGo(FlowDesk& desk) {
  desk.clusterize();
  EXPECT_EQ(desk.clusterize({.charts = false}), "CLOSE");
  desk.expectQuiet();
  EXPECT_TRUE(desk.chartTitles().empty());
}

void chartsAreMadeAnewInAFileThatWasOpenedAgain(FlowDesk& desk) {
  desk.clusterize();
  desk.look().host().reopen();
  desk.useBuiltInNetwork();
  EXPECT_EQ(desk.clusterize(), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.chartTitles(), (Texts{"Clusters profiles", "Clusters weights"}));
}

void aChartOfTheUsersSurvivesByItsTitleAlone(FlowDesk& desk) {
  for (const char* title : {"Mine", "", "Clusters weights"}) {
    const sheet::Chart chart = desk.look().embeddedChart("B2:C3", sheet::chartColumnClustered, sheet::plotByColumns);
    chart.HasTitle(title[0] != '\0');
    if (title[0] != '\0') chart.ChartTitle().Text(title);
  }
  const Variant left = desk.look().shown(desk.shape("Mine"), member::Left);
  EXPECT_EQ(desk.clusterize(), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.chartTitles(), (Texts{"Mine", "Clusters profiles", "Clusters weights"}));
  desk.look().expectShown(desk.shape("Mine"), member::Left, left);
}

void eachChartNeedsItsBlock(FlowDesk& desk) {
  desk.clusterize({.weights = false});
  EXPECT_EQ(desk.chartTitles(), Texts{"Clusters profiles"});
  desk.clusterize({.weightedAverages = false, .weights = false});
  EXPECT_TRUE(desk.chartTitles().empty());
  desk.expectQuiet();
}

void inputWithoutAHeaderRowStillHasItsCharts(FlowDesk& desk) {
  desk.clusterOf({{4, 1}, {6, 2}, {5, 1}});
  for (int i = 0; i < 3; ++i) {
    desk.write("B" + std::to_string(i + 1), Variant(4.0 + (i == 1 ? 2.0 : i == 2 ? 1.0 : 0.0)));
    desk.write("C" + std::to_string(i + 1), Variant(10.0 * i + 1.0));
  }
  EXPECT_EQ(desk.clusterize({.input = "B1:C3"}), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.chartTitles(), (Texts{"Clusters profiles", "Clusters weights"}));
  EXPECT_EQ(desk.chart("Clusters profiles").SeriesCollection().Count(), 2);
}

void aClusterWithoutMembersIsALineToo(FlowDesk& desk) {
  desk.clusterize({.clusters = "3"});
  const sheet::Chart chart = desk.chart("Clusters profiles");
  ASSERT_EQ(chart.SeriesCollection().Count(), 3);
  desk.look().expectShown(chart.SeriesCollection(3), member::Name, Variant("Cluster 3"));
  desk.look().expectShown(chart.SeriesCollection(3).Border(), member::ColorIndex, Variant(38));
}

}  // namespace

std::vector<FlowCheck> flowChartChecks() {
  return {
      {"TheProfilesAreALineForEachClusterOverTheHeaderRow", theProfilesAreALineForEachClusterOverTheHeaderRow},
      {"TheWeightsAreOneSeriesOfLabelledColumns", theWeightsAreOneSeriesOfLabelledColumns},
      {"TheValuesStandBesideTheColumns", theValuesStandBesideTheColumns},
      {"LinesAndColumnsTakeTheColoursOfTheirClusters", linesAndColumnsTakeTheColoursOfTheirClusters},
      {"BothChartsWearTheHousesDress", bothChartsWearTheHousesDress},
      {"ASecondRunMakesTheChartsAnew", aSecondRunMakesTheChartsAnew},
      {"WithoutChartsThoseOfTheRunBeforeGo", withoutChartsThoseOfTheRunBeforeGo},
      {"ChartsAreMadeAnewInAFileThatWasOpenedAgain", chartsAreMadeAnewInAFileThatWasOpenedAgain, true},
      {"AChartOfTheUsersSurvivesByItsTitleAlone", aChartOfTheUsersSurvivesByItsTitleAlone},
      {"EachChartNeedsItsBlock", eachChartNeedsItsBlock},
      {"InputWithoutAHeaderRowStillHasItsCharts", inputWithoutAHeaderRowStillHasItsCharts},
      {"AClusterWithoutMembersIsALineToo", aClusterWithoutMembersIsALineToo},
  };
}

}  // namespace mervane::tests
