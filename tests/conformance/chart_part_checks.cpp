#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

sheet::Chart titledChart(Walk& walk) {
  const sheet::Chart chart = walk.embeddedChart("B2:C6", sheet::chartLineWithMarkers, sheet::plotByRows);
  chart.HasTitle(true);
  chart.ChartTitle().Text("Clusters profiles");
  chart.HasLegend(true);
  return chart;
}

/// The last value of each is what a run asks for.
std::vector<Walk::Property> fontProperties() {
  return {{member::Name, {"Courier New", "Arial"}},
          {member::Size, {8, 12}},
          {member::FontStyle, {"Regular", "Bold"}},
          {member::Bold, {false, true}},
          {member::Strikethrough, {true, false}},
          {member::Superscript, {true, false}},
          {member::Subscript, {true, false}},
          {member::OutlineFont, {false}},
          {member::Shadow, {false}},
          {member::Underline, {2, sheet::none}},
          {member::ColorIndex, {6, 11}},
          {member::Background, {sheet::automatic}}};
}

std::vector<Walk::Property> borderProperties() {
  return {{member::ColorIndex, {3, 1}},
          {member::Weight, {sheet::weightMedium, sheet::weightThin, sheet::weightHairline}},
          {member::LineStyle, {sheet::lineDotted, sheet::lineContinuous}}};
}

std::vector<Walk::Property> interiorProperties() {
  return {{member::ColorIndex, {17, 24}}, {member::PatternColorIndex, {1}}, {member::Pattern, {sheet::patternSolid}}};
}

void theTitlesFontTakesEverySetting(Walk& walk) {
  walk.expectAssignable(titledChart(walk).ChartTitle().Font(), "Font", fontProperties());
}

void theLegendsFontTakesEverySetting(Walk& walk) {
  walk.expectAssignable(titledChart(walk).Legend().Font(), "Font", fontProperties());
}

void theTitleIsPlacedAndScaled(Walk& walk) {
  walk.expectAssignable(titledChart(walk).ChartTitle(), "ChartTitle",
                        {{member::Left, {20.0, 0.0}}, {member::Top, {10.0, 0.0}}, {member::AutoScaleFont, {true}}});
}

void theChartAreaIsFramedAndFilled(Walk& walk) {
  const sheet::Chart chart = titledChart(walk);
  walk.expectAssignable(chart.ChartArea().Border(), "Border", borderProperties());
  walk.expectAssignable(chart.ChartArea().Interior(), "Interior", interiorProperties());
}

void theChartAreaIsAsLargeAsTheShape(Walk& walk) {
  const sheet::ChartArea area = titledChart(walk).ChartArea();
  // An application may keep a narrow margin.
  constexpr double margin = 12.0;
  EXPECT_NEAR(area.Width(), 350.0, margin);
  EXPECT_NEAR(area.Height(), 200.0, margin);
}

void thePlotAreaIsFramedAndFilled(Walk& walk) {
  const sheet::Chart chart = titledChart(walk);
  walk.expectAssignable(chart.PlotArea().Border(), "Border", borderProperties());
  walk.expectAssignable(chart.PlotArea().Interior(), "Interior", interiorProperties());
  chart.PlotArea().Interior().ColorIndex(sheet::none);
  walk.expectShown(chart.PlotArea().Interior(), member::ColorIndex, Variant(sheet::none));
  chart.PlotArea().Border().LineStyle(sheet::none);
  walk.expectShown(chart.PlotArea().Border(), member::LineStyle, Variant(sheet::none));
}

void thePlotAreaIsPlacedWithinTheChart(Walk& walk) {
  const sheet::Chart chart = titledChart(walk);
  walk.expectAssignable(chart.PlotArea(), "PlotArea",
                        {{member::Left, {30.0, 10.0}},
                         {member::Top, {40.0, 20.0}},
                         {member::Width, {200.0, 250.0}},
                         {member::Height, {100.0, 120.0}}});
  EXPECT_NEAR(chart.PlotArea().Width(), 250.0, walk.tolerance());
  chart.PlotArea().Left(0.0);
  // More than the chart has room for.
  chart.PlotArea().Width(600.0);
  EXPECT_GT(chart.PlotArea().Width(), 250.0);
  EXPECT_LE(chart.PlotArea().Width(), 350.0 + walk.tolerance());
}

void theLegendIsFramedAndFilled(Walk& walk) {
  const sheet::Chart chart = titledChart(walk);
  walk.expectAssignable(chart.Legend().Border(), "Border", borderProperties());
  walk.expectAssignable(chart.Legend().Interior(), "Interior", interiorProperties());
  walk.expectAssignable(chart.Legend(), "Legend", {{member::Shadow, {false}}});
}

void theLegendIsPlacedAndSized(Walk& walk) {
  constexpr std::int32_t atBottom = -4107;
  const sheet::Chart chart = titledChart(walk);
  walk.expectAssignable(chart.Legend(), "Legend", {{member::Position, {atBottom, sheet::legendAtTop}}});
  walk.expectAssignable(chart.Legend(), "Legend",
                        {{member::Top, {30.0, 0.0}}, {member::Width, {120.0, 250.0}}, {member::Left, {20.0, 80.0}}});
  EXPECT_NEAR(chart.Legend().Width(), 250.0, walk.tolerance());
  const double height = chart.Legend().Height();
  EXPECT_GT(height, 0.0);
  chart.Legend().Height(height + 8.0);
  EXPECT_NEAR(chart.Legend().Height(), height + 8.0, walk.tolerance());
}

}  // namespace

std::vector<ConformanceCheck> chartPartChecks() {
  return {
      {"TheTitlesFontTakesEverySetting", theTitlesFontTakesEverySetting},
      {"TheLegendsFontTakesEverySetting", theLegendsFontTakesEverySetting},
      {"TheTitleIsPlacedAndScaled", theTitleIsPlacedAndScaled},
      {"TheChartAreaIsFramedAndFilled", theChartAreaIsFramedAndFilled},
      {"TheChartAreaIsAsLargeAsTheShape", theChartAreaIsAsLargeAsTheShape},
      {"ThePlotAreaIsFramedAndFilled", thePlotAreaIsFramedAndFilled},
      {"ThePlotAreaIsPlacedWithinTheChart", thePlotAreaIsPlacedWithinTheChart},
      {"TheLegendIsFramedAndFilled", theLegendIsFramedAndFilled},
      {"TheLegendIsPlacedAndSized", theLegendIsPlacedAndSized},
  };
}

}  // namespace mervane::tests
