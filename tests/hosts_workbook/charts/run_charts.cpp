#include "tests/hosts_workbook/charts/run_charts.h"

#include "mervane/failure.h"
#include "output/output_formatting.h"

namespace mervane::tests {

namespace {

void deleteSeries(TestBook& book, std::int32_t clusters) {
  const sheet::Chart chart = book.activeChart();
  for (std::int32_t i = chart.SeriesCollection().Count(); i >= 1; --i) chart.SeriesCollection(i).Delete();
  for (std::int32_t i = 0; i < clusters; ++i) chart.SeriesCollection().NewSeries();
}

void place(const sheet::Shape& shape, double top) {
  shape.Top(top);
  shape.Height(200);
  shape.Width(350);
  shape.Left(48.0 * 7);
}

}  // namespace

sheet::Chart addProfilesChart(TestBook& book, const sheet::Range& source, const sheet::Range& header) {
  book.newCharts().Add();
  sheet::Chart chart = book.activeChart();
  chart.HasTitle(true);
  chart.ChartTitle().Text("Clusters profiles");
  chart.ChartType(sheet::chartLineWithMarkers);
  chart.Location(sheet::locationAsObject, book.sheetName(0));
  deleteSeries(book, 4);
  chart = book.activeChart();
  chart.SetSourceData(source, sheet::plotByRows);
  for (std::int32_t i = 1; i <= chart.SeriesCollection().Count(); ++i) {
    const sheet::Series series = chart.SeriesCollection(i);
    series.Name("Cluster " + std::to_string(i));
    series.XValues(header);
  }
  COutputFormatting().ModifyChartObject(chart, mediumLine);
  return chart;
}

sheet::Chart addWeightsChart(TestBook& book, const sheet::Range& source, const sheet::Range& labels) {
  book.newCharts().Add();
  sheet::Chart chart = book.activeChart();
  chart.HasTitle(true);
  chart.ChartTitle().Text("Clusters weights");
  chart.ChartType(sheet::chartColumnClustered);
  chart.Location(sheet::locationAsObject, book.sheetName(0));
  deleteSeries(book, 4);
  chart = book.activeChart();
  chart.SetSourceData(source, sheet::plotByColumns);
  chart.ApplyDataLabels(sheet::labelsShowValue);
  chart.HasLegend(false);
  chart.PlotArea().Border().Weight(1);
  chart.PlotArea().Border().LineStyle(-4142);
  chart.SeriesCollection(1).XValues(labels);
  chart.PlotArea().Interior().ColorIndex(-4142);
  COutputFormatting().ModifyChartObject(chart, thinLine);
  return chart;
}

void makeRunCharts(TestBook& book) {
  addProfilesChart(book, book.range(0, "B7:E10"), book.range(0, "B1:E1"));
  addWeightsChart(book, book.range(0, "E11:E14"), book.range(0, "F11:F14"));
  for (const sheet::Shape& shape : book.shapes()) {
    if (shape.Type() != 3) continue;
    const std::string title = shape.DrawingObject().Chart().ChartTitle().Text();
    if (title == "Clusters weights") place(shape, 15);
    if (title == "Clusters profiles") place(shape, 215);
  }
}

}  // namespace mervane::tests
