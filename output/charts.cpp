#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "output/cluster_texts.h"
#include "output/output_formatting.h"
#include "output/procedure_keys.h"
#include "support/procedures.h"

namespace mervane {

namespace key = output::key;

namespace {

// Final place of the charts, in points.
constexpr double chartWidth = 350.0;
constexpr double chartHeight = 200.0;
/// From this version on a moved chart brings series of its own guess along.
constexpr double versionWithGuessedSeries = 12.0;

/// The number at the start of a version text such as "16.0", whatever the regional settings; 0 where there is none.
double leadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  double number = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  return number;
}

void setTitle(const sheet::Chart& chart, const char* title) {
  attempt([&] { chart.HasTitle(true); });
  attempt([&] { chart.ChartTitle().Text(title); });
}

}  // namespace

void COutputFormatting::DeleteOldCharts() {
  attempt([&] {
    sheet::forEach<sheet::ChartObject>(
        application_.ActiveWorkbook().ActiveSheet().ChartObjects(), [](const sheet::ChartObject& object) {
          // NB: reading the title of a chart without one fails, so such a chart is deleted too.
          const bool old = holdsOrFails([&] {
            const bool hasTitle = object.Chart().HasTitle();
            const bool showsWeights = object.Chart().ChartTitle().Text() == output::weightsTitle;
            const bool showsProfiles = object.Chart().ChartTitle().Text() == output::profilesTitle;
            return hasTitle && (showsWeights || showsProfiles);
          });
          if (old) attempt([&] { object.Delete(); });
        });
  });
}

void COutputFormatting::AddPortraitChart(const sheet::Range& source) {
  traced(key::AddPortraitChart, [&](Steps& step) {
    // 1. and 2. A chart on a sheet of its own.
    step([&] { application_.Charts().Add(); });
    sheet::Chart chart;
    step([&] { chart = application_.ActiveChart(); });
    // 3. Each of the title's statements can fail, before and after the move, so it is set twice.
    setTitle(chart, output::profilesTitle);
    // 4.
    step([&] { chart.ChartType(sheet::chartLineWithMarkers); });
    // 5. The move leaves the old reference dead.
    step([&] { chart.Location(sheet::locationAsObject, source.Worksheet().Name()); });
    // 6.
    chart = sheet::Chart();
    step([&] { ResetChartSeries(); });
    step([&] { chart = application_.ActiveChart(); });
    // 7. Each cluster is a series.
    step([&] { chart.SetSourceData(source, sheet::plotByRows); });
    // 8.
    setTitle(chart, output::profilesTitle);
    // 9. The count is read once.
    std::int32_t count = 0;
    step([&] { count = chart.SeriesCollection().Count(); });
    for (std::int32_t i = 1; i <= count; ++i) {
      // 9.1 A series whose formula cannot be read keeps its name and line.
      std::size_t length = 0;
      attempt([&] { length = chart.SeriesCollection(i).Formula().size(); });
      // 9.2
      if (length > 0) {
        sheet::Series series;
        step([&] { series = chart.SeriesCollection(i); });
        step([&] { series.Name(output::clusterName(i)); });
        sheet::Border line;
        step([&] { line = series.Border(); });
        step([&] { line.ColorIndex(ClusterColorIndex(i)); });
        step([&] { line.Weight(sheet::weightThin); });
        step([&] { line.LineStyle(sheet::lineContinuous); });
      }
      // 9.3 The header row above the input; input that begins in row 1 has none.
      attempt([&] {
        const sheet::Range header = inputRange_.Offset(-1, 0).Resize(1, inputRange_.Columns().Count());
        chart.SeriesCollection(i).XValues(header);
      });
    }
    // 10.
    chart = sheet::Chart();
    step([&] { ModifyChartObject(application_.ActiveChart(), sheet::weightMedium); });
  });
}

void COutputFormatting::AddWeightsChart(const sheet::Range& source) {
  traced(key::AddWeightsChart, [&](Steps& step) {
    // 1. A chart on a sheet of its own, with its title.
    step([&] { application_.Charts().Add(); });
    sheet::Chart chart;
    step([&] { chart = application_.ActiveChart(); });
    setTitle(chart, output::weightsTitle);
    // 2.
    step([&] { chart.ChartType(sheet::chartColumnClustered); });
    // 3. The move leaves the old reference dead.
    step([&] { chart.Location(sheet::locationAsObject, source.Worksheet().Name()); });
    chart = sheet::Chart();
    step([&] { ResetChartSeries(); });
    step([&] { chart = application_.ActiveChart(); });
    // 4. The one column is the one series.
    step([&] { chart.SetSourceData(source, sheet::plotByColumns); });
    // 5.
    setTitle(chart, output::weightsTitle);
    // 6. to 8.
    step([&] { chart.ApplyDataLabels(sheet::labelsShowValue); });
    step([&] { chart.HasLegend(false); });
    sheet::Border frame;
    step([&] { frame = chart.PlotArea().Border(); });
    step([&] { frame.Weight(sheet::weightHairline); });
    step([&] { frame.LineStyle(sheet::none); });
    // 9. The labels right of the weights are the categories.
    step([&] { chart.SeriesCollection(1).XValues(source.Offset(0, 1)); });
    // 10.
    step([&] { chart.PlotArea().Interior().ColorIndex(sheet::none); });
    // 11. NB: the thin line also asks for a colour of its own for each point.
    chart = sheet::Chart();
    step([&] { ModifyChartObject(application_.ActiveChart(), sheet::weightThin); });
  });
}

void COutputFormatting::ResetChartSeries() {
  // 1. A version that cannot be read counts as an early one.
  if (holdsOrFails([&] { return leadingNumber(application_.Version()) < versionWithGuessedSeries; })) return;
  // 2.
  if (holdsOrFails([&] { return !application_.ActiveChart(); })) return;
  // 3. From the last series to the first.
  std::int32_t count = 0;
  attempt([&] { count = application_.ActiveChart().SeriesCollection().Count(); });
  for (std::int32_t i = count; i >= 1; --i) {
    attempt([&] { application_.ActiveChart().SeriesCollection(i).Delete(); });
  }
  // 4. NB: the weights chart gets as many, although it is to have one series.
  for (std::int32_t k = 1; k <= clusters_; ++k) {
    attempt([&] { application_.ActiveChart().SeriesCollection().NewSeries(); });
  }
}

void COutputFormatting::AdjustChartsLocation() {
  traced(key::AdjustChartsLocation, [&](Steps& step) {
    // 1. and 2. The whole listing.
    sheet::Range listing;
    step([&] { listing = outputRange(); });
    step([&] { listing = listing.Resize(inputRange_.Rows().Count(), toOneColumn_ ? 1 : clusters_); });
    // 3. The charts are known by their titles.
    sheet::Enumerator<sheet::Shape> shapes;
    step([&] { shapes = sheet::Enumerator<sheet::Shape>(application_.ActiveSheet().Shapes()); });
    for (;;) {
      sheet::Shape shape;
      step([&] { shape = shapes.next(); });
      if (!shape) break;
      if (!step.holds([&] { return shape.Type() == sheet::shapeTypeChart; })) continue;
      if (!step.holds([&] { return shape.DrawingObject().Chart().HasTitle(); })) continue;
      std::string title;
      step([&] { title = shape.DrawingObject().Chart().ChartTitle().Text(); });
      // The weights stand on top, the profiles directly under them.
      double below = 0.0;
      if (title == output::profilesTitle) {
        below = chartHeight;
      } else if (title != output::weightsTitle) {
        continue;
      }
      step([&] { shape.Top(listing.Top() + below); });
      step([&] { shape.Height(chartHeight); });
      step([&] { shape.Width(chartWidth); });
      step([&] { shape.Left(listing.Left() + listing.Width()); });
    }
  });
}

}  // namespace mervane
