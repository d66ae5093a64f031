#include <cstddef>
#include <cstdint>

#include "output/cluster_texts.h"
#include "output/output_formatting.h"
#include "output/procedure_keys.h"
#include "support/globals.h"
#include "support/procedures.h"

namespace mervane {

namespace key = output::key;

namespace {

constexpr const char* fontName = "Arial";
constexpr std::int32_t axisFontSize = 10;
constexpr std::int32_t titleFontSize = 12;
constexpr std::int32_t legendFontSize = 8;
constexpr std::int32_t markerSize = 5;

// Palette indexes of the parts.
constexpr std::int32_t black = 1;
constexpr std::int32_t titleColor = 6;
constexpr std::int32_t categoryLabelColor = 11;
constexpr std::int32_t chartAreaColor = 17;
constexpr std::int32_t plotAreaColor = 24;
constexpr std::int32_t grey = 48;

// The frame, in points of the chart at its default size.
constexpr double titleHeight = 18.0;
constexpr double legendGrowth = 8.0;
constexpr double legendWidth = 250.0;
constexpr double plotWidth = 600.0;
constexpr std::int32_t chartAreaLine = -1;

/// The colour of the next series or point. The counter runs 1, 2, ... 15, 1, 2 ...
/// NB: it never reaches position 0, so the sixteenth takes another colour here than in the cells.
std::int32_t nextColor(std::int16_t& counter) {
  constexpr std::int16_t end = 16;
  ++counter;
  if (counter == end) counter = 1;
  return output::clusterColors[static_cast<std::size_t>(counter)];
}

/// Settings that the fonts of the value axis, of the title and of the legend share.
template <class Owner>
void plainFont(const Owner& font, std::int32_t size, std::int32_t color, bool bold) {
  attempt([&] { font().Name(fontName); });
  if (bold) attempt([&] { font().FontStyle("Bold"); });
  attempt([&] { font().Size(size); });
  attempt([&] { font().Strikethrough(false); });
  attempt([&] { font().Superscript(false); });
  attempt([&] { font().Subscript(false); });
  attempt([&] { font().OutlineFont(false); });
  attempt([&] { font().Shadow(false); });
  attempt([&] { font().Underline(sheet::none); });
  attempt([&] { font().ColorIndex(color); });
  attempt([&] { font().Background(sheet::automatic); });
}

void styleSeries(const sheet::Series& series, std::int32_t color, std::int32_t borderWeight) {
  attempt([&] { series.Border().ColorIndex(color); });
  attempt([&] { series.Border().Weight(borderWeight); });
  attempt([&] { series.Border().LineStyle(sheet::lineContinuous); });
  attempt([&] { series.MarkerBackgroundColorIndex(sheet::automatic); });
  attempt([&] { series.MarkerForegroundColorIndex(color); });
  attempt([&] { series.Smooth(false); });
  attempt([&] { series.MarkerSize(markerSize); });
  attempt([&] { series.Shadow(false); });
  attempt([&] { series.Interior().ColorIndex(color); });
  attempt([&] { series.Interior().Pattern(sheet::patternSolid); });
}

void stylePoint(const sheet::Point& point, std::int32_t color) {
  attempt([&] { point.Border().ColorIndex(color); });
  attempt([&] { point.Border().Weight(sheet::weightThin); });
  attempt([&] { point.Border().LineStyle(sheet::lineContinuous); });
  attempt([&] { point.Shadow(false); });
  attempt([&] { point.InvertIfNegative(false); });
  attempt([&] { point.Interior().ColorIndex(color); });
  attempt([&] { point.Interior().Pattern(sheet::patternSolid); });
}

/// Steps 1 and 2: the series, and with thin lines the points of each.
void styleAllSeries(const sheet::Chart& chart, std::int32_t borderWeight) {
  std::int16_t seriesIndex = 0;
  std::int16_t pointIndex = 0;  // NB: it runs on from series to series.
  attempt([&] {
    sheet::forEach<sheet::Series>(chart.SeriesCollection(), [&](const sheet::Series& series) {
      styleSeries(series, nextColor(seriesIndex), borderWeight);
      if (borderWeight != sheet::weightThin) return;
      attempt([&] {
        sheet::forEach<sheet::Point>(series.Points(),
                                     [&](const sheet::Point& point) { stylePoint(point, nextColor(pointIndex)); });
      });
    });
  });
}

/// Step 3: solid gridlines for the values, dotted ones for the categories; only the category labels are coloured.
void styleAxes(const sheet::Chart& chart) {
  const auto categories = [&] { return chart.Axes(sheet::axisCategory, sheet::axisGroupPrimary); };
  const auto values = [&] { return chart.Axes(sheet::axisValue, sheet::axisGroupPrimary); };
  attempt([&] { categories().TickLabels().Font().Name(fontName); });
  attempt([&] { categories().TickLabels().Font().Size(axisFontSize); });
  attempt([&] { categories().TickLabels().Font().Shadow(false); });
  attempt([&] { categories().TickLabels().Font().ColorIndex(categoryLabelColor); });
  attempt([&] { categories().TickLabels().Font().Background(sheet::automatic); });

  attempt([&] { values().MinorUnitIsAuto(true); });
  attempt([&] { values().MajorUnitIsAuto(true); });
  attempt([&] { values().Crosses(sheet::automatic); });
  attempt([&] { values().ReversePlotOrder(false); });
  attempt([&] { values().ScaleType(sheet::scaleLinear); });
  attempt([&] { values().DisplayUnit(sheet::none); });
  attempt([&] { values().HasMajorGridlines(true); });
  attempt([&] { values().HasMinorGridlines(false); });
  attempt([&] { values().MajorGridlines().Border().ColorIndex(grey); });
  attempt([&] { values().MajorGridlines().Border().Weight(sheet::weightHairline); });
  attempt([&] { values().MajorGridlines().Border().LineStyle(sheet::lineContinuous); });
  plainFont([&] { return values().TickLabels().Font(); }, axisFontSize, sheet::automatic, false);

  attempt([&] { categories().TickMarkSpacing(categories().TickLabelSpacing()); });
  attempt([&] { categories().BaseUnitIsAuto(true); });
  attempt([&] { categories().Crosses(sheet::automatic); });
  attempt([&] { categories().AxisBetweenCategories(true); });
  attempt([&] { categories().ReversePlotOrder(false); });
  attempt([&] { categories().HasMajorGridlines(true); });
  attempt([&] { categories().HasMinorGridlines(false); });
  attempt([&] { categories().MajorGridlines().Border().ColorIndex(grey); });
  attempt([&] { categories().MajorGridlines().Border().Weight(sheet::weightHairline); });
  attempt([&] { categories().MajorGridlines().Border().LineStyle(sheet::lineDotted); });
}

/// Step 4: the areas and the title.
void styleAreas(const sheet::Chart& chart) {
  attempt([&] { chart.ChartArea().Border().Weight(sheet::weightThin); });
  attempt([&] { chart.ChartArea().Border().LineStyle(chartAreaLine); });
  attempt([&] { chart.ChartArea().Interior().ColorIndex(chartAreaColor); });
  attempt([&] { chart.ChartArea().Interior().PatternColorIndex(black); });
  attempt([&] { chart.ChartArea().Interior().Pattern(sheet::patternSolid); });
  attempt([&] { chart.Legend().Position(sheet::legendAtTop); });
  attempt([&] { chart.PlotArea().Interior().ColorIndex(grey); });
  attempt([&] { chart.PlotArea().Interior().PatternColorIndex(black); });
  attempt([&] { chart.PlotArea().Interior().Pattern(sheet::patternSolid); });
  attempt([&] { chart.PlotArea().Top(titleHeight); });
  attempt([&] { chart.PlotArea().Left(0.0); });
  attempt([&] { chart.PlotArea().Border().ColorIndex(black); });
  attempt([&] { chart.PlotArea().Border().Weight(sheet::weightThin); });
  attempt([&] { chart.PlotArea().Border().LineStyle(sheet::lineContinuous); });
  // NB: the second fill of the plot area stands.
  attempt([&] { chart.PlotArea().Interior().ColorIndex(plotAreaColor); });
  attempt([&] { chart.PlotArea().Interior().PatternColorIndex(black); });
  attempt([&] { chart.PlotArea().Interior().Pattern(sheet::patternSolid); });
  if (holdsOrFails([&] { return !chart.HasLegend(); })) {
    attempt([&] { chart.PlotArea().Height(chart.ChartArea().Height() - titleHeight); });
  }
  attempt([&] { chart.ChartTitle().Left(0.0); });
  attempt([&] { chart.ChartTitle().Top(0.0); });
  attempt([&] { chart.ChartTitle().AutoScaleFont(true); });
  plainFont([&] { return chart.ChartTitle().Font(); }, titleFontSize, titleColor, true);
}

/// Step 5 of a chart with a legend: the plot area goes under it.
void placeLegend(const sheet::Chart& chart) {
  attempt([&] { chart.Legend().Top(0.0); });
  attempt([&] { chart.Legend().Border().Weight(sheet::weightHairline); });
  attempt([&] { chart.Legend().Border().LineStyle(sheet::automatic); });
  attempt([&] { chart.Legend().Shadow(false); });
  attempt([&] { chart.Legend().Interior().ColorIndex(plotAreaColor); });
  attempt([&] { chart.Legend().Interior().PatternColorIndex(black); });
  attempt([&] { chart.Legend().Interior().Pattern(sheet::patternSolid); });
  plainFont([&] { return chart.Legend().Font(); }, legendFontSize, sheet::automatic, false);
  attempt([&] { chart.Legend().Width(legendWidth); });
  attempt([&] {
    const double right = chart.ChartArea().Width();
    chart.Legend().Left(right - chart.Legend().Width());
  });
  // NB: every styling adds to the height.
  attempt([&] { chart.Legend().Height(chart.Legend().Height() + legendGrowth); });
  double legendHeight = 0.0;
  attempt([&] { legendHeight = chart.Legend().Height(); });
  attempt([&] { chart.PlotArea().Left(0.0); });
  attempt([&] { chart.PlotArea().Width(plotWidth); });
  attempt([&] { chart.PlotArea().Top(legendHeight); });
  attempt([&] { chart.PlotArea().Height(chart.ChartArea().Height() - legendHeight); });
  attempt([&] { chart.Legend().Width(legendWidth); });
  attempt([&] {
    const double right = chart.PlotArea().Width();
    chart.Legend().Left(right - chart.Legend().Width());
  });
}

}  // namespace

void COutputFormatting::ModifyChartObject(const sheet::Chart& chart, std::int32_t borderWeight) {
  traced(key::ModifyChartObject, [&](Steps& step) {
    // From here on nothing that fails is reported.
    styleAllSeries(chart, borderWeight);
    styleAxes(chart);
    styleAreas(chart);
    if (holdsOrFails([&] { return chart.HasLegend(); })) {
      placeLegend(chart);
    } else {
      attempt([&] { chart.PlotArea().Left(0.0); });
      attempt([&] { chart.PlotArea().Width(plotWidth); });
    }
    // The exit report is silent too, so the reported one of a traced procedure is left out.
    attempt([] { globals::errorHandler().CallStackPop(); });
    step.leave();
  });
}

}  // namespace mervane
