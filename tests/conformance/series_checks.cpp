#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

sheet::Chart lineChart(Walk& walk) {
  return walk.embeddedChart("B2:C3", sheet::chartLineWithMarkers, sheet::plotByRows);
}

sheet::Chart columnChart(Walk& walk) {
  return walk.embeddedChart("C2:C6", sheet::chartColumnClustered, sheet::plotByColumns);
}

void seriesAreCountedEnumeratedAndFoundFromOne(Walk& walk) {
  const sheet::Chart chart = lineChart(walk);
  EXPECT_EQ(chart.SeriesCollection().Count(), 2);
  std::vector<std::string> formulas;
  sheet::forEach<sheet::Series>(chart.SeriesCollection(),
                                [&](const sheet::Series& series) { formulas.push_back(series.Formula()); });
  ASSERT_EQ(formulas.size(), 2U);
  EXPECT_EQ(chart.SeriesCollection(1).Formula(), formulas[0]);
  EXPECT_EQ(chart.SeriesCollection(2).Formula(), formulas[1]);
  expectRefusal([&] { static_cast<void>(chart.SeriesCollection(3).Formula()); });
  expectRefusal([&] { static_cast<void>(chart.SeriesCollection(0).Formula()); });
}

void theFormulaOfASeriesNamesItsCells(Walk& walk) {
  const sheet::Chart chart = lineChart(walk);
  EXPECT_NE(chart.SeriesCollection(1).Formula().find("$B$2:$C$2"), std::string::npos)
      << chart.SeriesCollection(1).Formula();
  EXPECT_NE(chart.SeriesCollection(2).Formula().find("$B$3:$C$3"), std::string::npos);
}

void aSeriesTakesANameAndCategories(Walk& walk) {
  const sheet::Chart chart = lineChart(walk);
  const sheet::Series series = chart.SeriesCollection(1);
  series.Name("Cluster 1");
  walk.expectShown(series, member::Name, Variant("Cluster 1"));
  series.XValues(walk.range("B1:C1"));
  const Variant categories = walk.shown(series, member::XValues);
  ASSERT_TRUE(categories.isArray());
  const AnyArray& texts = categories.array();
  ASSERT_EQ(texts.upperBound(1) - texts.lowerBound(1), 1);
  EXPECT_EQ(texts.at(texts.lowerBound(1)), Variant("Length"));
  EXPECT_EQ(texts.at(texts.upperBound(1)), Variant("Width"));
  EXPECT_NE(series.Formula().find("$B$1:$C$1"), std::string::npos) << series.Formula();
}

void seriesAreDeletedFromTheLastToTheFirstAndMadeAnew(Walk& walk) {
  const sheet::Chart chart = lineChart(walk);
  for (std::int32_t i = chart.SeriesCollection().Count(); i >= 1; --i) chart.SeriesCollection(i).Delete();
  EXPECT_EQ(chart.SeriesCollection().Count(), 0);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(chart.SeriesCollection().NewSeries());
  EXPECT_EQ(chart.SeriesCollection().Count(), 3);
  chart.SetSourceData(walk.range("B2:C3"), sheet::plotByRows);
  EXPECT_EQ(chart.SeriesCollection().Count(), 2);
}

void aLineTakesItsColourWeightMarkersAndShape(Walk& walk) {
  const sheet::Series series = lineChart(walk).SeriesCollection(2);
  walk.expectAssignable(series.Border(), "Border",
                        {{member::ColorIndex, {36, 50}},
                         {member::Weight, {sheet::weightThin, sheet::weightMedium}},
                         {member::LineStyle, {sheet::lineContinuous}}});
  walk.expectAssignable(series, "Series",
                        {{member::MarkerBackgroundColorIndex, {3, sheet::automatic}},
                         {member::MarkerForegroundColorIndex, {3, 50}},
                         {member::Smooth, {true, false}},
                         {member::MarkerSize, {7, 5}},
                         {member::Shadow, {false}}});
}

void oneSeriesOwnSettingsAreNotTheOthers(Walk& walk) {
  const sheet::Chart chart = lineChart(walk);
  chart.SeriesCollection(1).Border().ColorIndex(36);
  chart.SeriesCollection(2).Border().ColorIndex(50);
  walk.expectShown(chart.SeriesCollection(1).Border(), member::ColorIndex, Variant(36));
  walk.expectShown(chart.SeriesCollection(2).Border(), member::ColorIndex, Variant(50));
}

void columnsAreFilled(Walk& walk) {
  const sheet::Series series = columnChart(walk).SeriesCollection(1);
  walk.expectAssignable(series.Interior(), "Interior",
                        {{member::ColorIndex, {36, 50}}, {member::Pattern, {sheet::patternSolid}}});
}

void eachValueIsAPoint(Walk& walk) {
  int points = 0;
  sheet::forEach<sheet::Point>(columnChart(walk).SeriesCollection(1).Points(), [&](const sheet::Point&) { ++points; });
  EXPECT_EQ(points, 5);
}

void eachPointTakesAColourOfItsOwn(Walk& walk) {
  const sheet::Chart chart = columnChart(walk);
  std::int32_t color = 33;
  sheet::forEach<sheet::Point>(chart.SeriesCollection(1).Points(), [&](const sheet::Point& point) {
    ++color;
    walk.expectAssignable(point.Border(), "Border",
                          {{member::ColorIndex, {color}},
                           {member::Weight, {sheet::weightThin}},
                           {member::LineStyle, {sheet::lineContinuous}}});
    walk.expectAssignable(point, "Point", {{member::Shadow, {false}}, {member::InvertIfNegative, {true, false}}});
    walk.expectAssignable(point.Interior(), "Interior",
                          {{member::ColorIndex, {color}}, {member::Pattern, {sheet::patternSolid}}});
  });
  color = 33;
  sheet::forEach<sheet::Point>(chart.SeriesCollection(1).Points(), [&](const sheet::Point& point) {
    walk.expectShown(point.Interior(), member::ColorIndex, Variant(++color));
  });
}

}  // namespace

std::vector<ConformanceCheck> seriesChecks() {
  return {
      {"SeriesAreCountedEnumeratedAndFoundFromOne", seriesAreCountedEnumeratedAndFoundFromOne},
      {"TheFormulaOfASeriesNamesItsCells", theFormulaOfASeriesNamesItsCells},
      {"ASeriesTakesANameAndCategories", aSeriesTakesANameAndCategories},
      {"SeriesAreDeletedFromTheLastToTheFirstAndMadeAnew", seriesAreDeletedFromTheLastToTheFirstAndMadeAnew},
      {"ALineTakesItsColourWeightMarkersAndShape", aLineTakesItsColourWeightMarkersAndShape},
      {"OneSeriesOwnSettingsAreNotTheOthers", oneSeriesOwnSettingsAreNotTheOthers},
      {"ColumnsAreFilled", columnsAreFilled},
      {"EachValueIsAPoint", eachValueIsAPoint},
      {"EachPointTakesAColourOfItsOwn", eachPointTakesAColourOfItsOwn},
  };
}

}  // namespace mervane::tests
