#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

/// The charts of the active sheet.
std::vector<sheet::ChartObject> chartsOf(Walk& walk) {
  std::vector<sheet::ChartObject> charts;
  sheet::forEach<sheet::ChartObject>(walk.activeSheet().ChartObjects(),
                                     [&](const sheet::ChartObject& chart) { charts.push_back(chart); });
  return charts;
}

sheet::Chart plainChart(Walk& walk) {
  return walk.embeddedChart("B2:C3", sheet::chartLineWithMarkers, sheet::plotByRows);
}

void noChartIsActiveBeforeOneIsMade(Walk& walk) {
  EXPECT_FALSE(walk.application().ActiveChart());
  EXPECT_TRUE(chartsOf(walk).empty());
}

void aNewChartIsTheActiveOneAndOnNoWorksheetUntilItIsMoved(Walk& walk) {
  EXPECT_TRUE(walk.application().Charts().Add());
  EXPECT_TRUE(walk.application().ActiveChart());
  EXPECT_EQ(walk.application().ActiveWorkbook().Worksheets().Count(), 2);
  walk.application().ActiveChart().Location(sheet::locationAsObject, "Sheet1");
  ASSERT_TRUE(walk.application().ActiveChart());
  walk.application().ActiveChart().HasTitle(true);
  walk.application().ActiveChart().ChartTitle().Text("moved");
  ASSERT_EQ(chartsOf(walk).size(), 1U);
  EXPECT_EQ(chartsOf(walk)[0].Chart().ChartTitle().Text(), "moved");
  EXPECT_EQ(walk.application().ActiveSheet().Name(), "Sheet1");
}

void aChartCannotBeMovedToASheetThatIsNotThere(Walk& walk) {
  static_cast<void>(walk.application().Charts().Add());
  expectRefusal([&] { walk.application().ActiveChart().Location(sheet::locationAsObject, "Nowhere"); });
}

void theTitleComesAndGoes(Walk& walk) {
  const sheet::Chart chart = plainChart(walk);
  chart.HasTitle(false);
  EXPECT_FALSE(chart.HasTitle());
  expectRefusal([&] { static_cast<void>(chart.ChartTitle().Text()); });
  chart.HasTitle(true);
  EXPECT_TRUE(chart.HasTitle());
  chart.ChartTitle().Text("Clusters <profiles> & more \xE2\x82\xAC");
  EXPECT_EQ(chart.ChartTitle().Text(), "Clusters <profiles> & more \xE2\x82\xAC");
  chart.HasTitle(false);
  expectRefusal([&] { static_cast<void>(chart.ChartTitle().Text()); });
}

void theLegendComesAndGoes(Walk& walk) {
  const sheet::Chart chart = plainChart(walk);
  chart.HasLegend(false);
  EXPECT_FALSE(chart.HasLegend());
  expectRefusal([&] { static_cast<void>(chart.Legend().Height()); });
  chart.HasLegend(true);
  EXPECT_TRUE(chart.HasLegend());
  EXPECT_GT(chart.Legend().Height(), 0.0);
}

void theTypeIsKept(Walk& walk) {
  const sheet::Chart chart = plainChart(walk);
  walk.expectAssignable(
      chart, "Chart",
      {{member::ChartType, {Variant(sheet::chartColumnClustered), Variant(sheet::chartLineWithMarkers)}}});
}

void seriesAreTheRowsOrTheColumnsOfTheSource(Walk& walk) {
  const sheet::Chart chart = plainChart(walk);
  chart.SetSourceData(walk.range("B2:C6"), sheet::plotByRows);
  EXPECT_EQ(chart.SeriesCollection().Count(), 5);
  chart.SetSourceData(walk.range("B2:C6"), sheet::plotByColumns);
  EXPECT_EQ(chart.SeriesCollection().Count(), 2);
  chart.SetSourceData(walk.range("C2:C6"), sheet::plotByColumns);
  EXPECT_EQ(chart.SeriesCollection().Count(), 1);
}

void dataLabelsShowTheValues(Walk& walk) {
  const sheet::Chart chart = walk.embeddedChart("B2:B6", sheet::chartColumnClustered, sheet::plotByColumns);
  EXPECT_FALSE(walk.host().showsDataLabels());
  chart.ApplyDataLabels(sheet::labelsShowValue);
  EXPECT_TRUE(walk.host().showsDataLabels());
}

void chartsOfASheetAreEnumeratedInTheirOrder(Walk& walk) {
  for (const char* title : {"first", "second", "third"}) {
    const sheet::Chart chart = plainChart(walk);
    chart.HasTitle(true);
    chart.ChartTitle().Text(title);
  }
  std::vector<std::string> titles;
  for (const sheet::ChartObject& one : chartsOf(walk)) titles.push_back(one.Chart().ChartTitle().Text());
  EXPECT_EQ(titles, (std::vector<std::string>{"first", "second", "third"}));
}

void chartsMayBeDeletedWhileTheyAreEnumerated(Walk& walk) {
  for (int i = 0; i < 4; ++i) static_cast<void>(plainChart(walk));
  const sheet::Range kept = walk.range("A1");
  int seen = 0;
  sheet::forEach<sheet::ChartObject>(walk.activeSheet().ChartObjects(), [&](const sheet::ChartObject& chart) {
    if (++seen != 3) chart.Delete();
  });
  EXPECT_EQ(seen, 4) << "none is missed";
  EXPECT_EQ(chartsOf(walk).size(), 1U);
  EXPECT_EQ(kept.Value(), Variant("Name"));
}

void aDeletedChartIsNotUsedAnyMore(Walk& walk) {
  static_cast<void>(plainChart(walk));
  const sheet::ChartObject chart = chartsOf(walk).at(0);
  chart.Delete();
  EXPECT_TRUE(chartsOf(walk).empty());
  expectRefusal([&] { static_cast<void>(chart.Chart().HasTitle()); });
}

void chartsAreThereAfterTheFileIsOpenedAgain(Walk& walk) {
  const sheet::Chart chart = plainChart(walk);
  chart.HasTitle(true);
  chart.ChartTitle().Text("Clusters profiles");
  walk.host().reopen();
  ASSERT_EQ(chartsOf(walk).size(), 1U);
  EXPECT_TRUE(chartsOf(walk)[0].Chart().HasTitle());
  EXPECT_EQ(chartsOf(walk)[0].Chart().ChartTitle().Text(), "Clusters profiles");
  chartsOf(walk)[0].Delete();
  walk.host().reopen();
  EXPECT_TRUE(chartsOf(walk).empty());
}

}  // namespace

std::vector<ConformanceCheck> chartChecks() {
  return {
      {"NoChartIsActiveBeforeOneIsMade", noChartIsActiveBeforeOneIsMade},
      {"ANewChartIsTheActiveOneAndOnNoWorksheetUntilItIsMoved", aNewChartIsTheActiveOneAndOnNoWorksheetUntilItIsMoved},
      {"AChartCannotBeMovedToASheetThatIsNotThere", aChartCannotBeMovedToASheetThatIsNotThere},
      {"TheTitleComesAndGoes", theTitleComesAndGoes},
      {"TheLegendComesAndGoes", theLegendComesAndGoes},
      {"TheTypeIsKept", theTypeIsKept},
      {"SeriesAreTheRowsOrTheColumnsOfTheSource", seriesAreTheRowsOrTheColumnsOfTheSource},
      {"DataLabelsShowTheValues", dataLabelsShowTheValues},
      {"ChartsOfASheetAreEnumeratedInTheirOrder", chartsOfASheetAreEnumeratedInTheirOrder},
      {"ChartsMayBeDeletedWhileTheyAreEnumerated", chartsMayBeDeletedWhileTheyAreEnumerated},
      {"ADeletedChartIsNotUsedAnyMore", aDeletedChartIsNotUsedAnyMore},
      {"ChartsAreThereAfterTheFileIsOpenedAgain", chartsAreThereAfterTheFileIsOpenedAgain, true},
  };
}

}  // namespace mervane::tests
