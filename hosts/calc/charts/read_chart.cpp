#include "hosts/calc/charts/read_chart.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/chart2/XChartTypeContainer.hpp>
#include <com/sun/star/chart2/XCoordinateSystemContainer.hpp>
#include <com/sun/star/chart2/XDataSeries.hpp>
#include <com/sun/star/chart2/XDataSeriesContainer.hpp>
#include <com/sun/star/chart2/XFormattedString.hpp>
#include <com/sun/star/chart2/XTitled.hpp>
#include <com/sun/star/chart2/data/XDataSource.hpp>
#include <com/sun/star/chart2/data/XTextualDataSequence.hpp>

#include "hosts/calc/charts/chart_reference.h"

namespace mervane::calc {

namespace number = mervane::charts::number;
using mervane::charts::Chart;
using mervane::charts::DataSource;
using mervane::charts::Series;

namespace {

using Sequence = uno::Reference<css::chart2::data::XDataSequence>;
using Properties = uno::Reference<css::beans::XPropertySet>;

DataSource sourceOf(const Session& session, const Sequence& sequence) {
  DataSource source;
  if (!sequence.is()) return source;
  const std::string reference = fromOffice(sequence->getSourceRangeRepresentation());
  source.area = areaOfChartReference(session, reference);
  if (!source.area) source.formula = reference;
  return source;
}

/// What a name shows: the text of its cells, or its own.
std::string textOf(const Sequence& sequence) {
  const uno::Reference<css::chart2::data::XTextualDataSequence> texts(sequence, uno::UNO_QUERY);
  std::string text;
  if (!texts.is()) return text;
  for (const rtl::OUString& part : texts->getTextualData()) text += (text.empty() ? "" : " ") + fromOffice(part);
  return text;
}

std::shared_ptr<Series> readSeries(const Session& session, const uno::Reference<css::chart2::XDataSeries>& series) {
  auto result = std::make_shared<Series>();
  const uno::Reference<css::chart2::data::XDataSource> source(series, uno::UNO_QUERY_THROW);
  for (const auto& labeled : source->getDataSequences()) {
    const Sequence values = labeled->getValues();
    rtl::OUString role;
    const Properties properties(values, uno::UNO_QUERY);
    if (properties.is()) properties->getPropertyValue("Role") >>= role;
    if (!role.startsWith("values-y") && !role.startsWith("values-size")) continue;
    result->values = sourceOf(session, values);
    if (const Sequence label = labeled->getLabel(); label.is()) {
      result->name = sourceOf(session, label);
      if (!result->name.area) result->name.formula.clear();
      result->name.literal = textOf(label);
    }
  }
  return result;
}

std::int32_t typeOf(const uno::Reference<css::chart2::XChartType>& type, bool swapped) {
  const rtl::OUString name = type->getChartType();
  if (name == "com.sun.star.chart2.LineChartType") return number::lineMarkersChart;
  if (name == "com.sun.star.chart2.ColumnChartType" || name == "com.sun.star.chart2.BarChartType") {
    return swapped ? number::clusteredBarChart : number::clusteredColumnChart;
  }
  if (name == "com.sun.star.chart2.AreaChartType") return number::areaChart;
  if (name == "com.sun.star.chart2.PieChartType") return number::pieChart;
  if (name == "com.sun.star.chart2.ScatterChartType") return number::scatterChart;
  if (name == "com.sun.star.chart2.NetChartType" || name == "com.sun.star.chart2.FilledNetChartType")
    return number::radarChart;
  return name == "com.sun.star.chart2.BubbleChartType" ? number::bubbleChart : 0;
}

void readPlot(const Session& session, Chart& chart, const uno::Reference<css::chart2::XDiagram>& diagram) {
  const uno::Reference<css::chart2::XCoordinateSystemContainer> systems(diagram, uno::UNO_QUERY_THROW);
  bool isFirst = true;
  for (const auto& system : systems->getCoordinateSystems()) {
    bool swapped = false;
    const Properties properties(system, uno::UNO_QUERY_THROW);
    properties->getPropertyValue("SwapXAndYAxis") >>= swapped;
    DataSource categories;
    const auto axis = system->getAxisByDimension(0, 0);
    if (axis.is()) {
      const auto labeled = axis->getScaleData().Categories;
      if (labeled.is()) categories = sourceOf(session, labeled->getValues());
    }
    const uno::Reference<css::chart2::XChartTypeContainer> types(system, uno::UNO_QUERY_THROW);
    for (const auto& type : types->getChartTypes()) {
      if (isFirst) chart.type = typeOf(type, swapped);
      isFirst = false;
      const uno::Reference<css::chart2::XDataSeriesContainer> series(type, uno::UNO_QUERY_THROW);
      for (const auto& one : series->getDataSeries()) {
        chart.series.push_back(readSeries(session, one));
        chart.series.back()->categories = categories;
      }
    }
  }
}

std::string titleText(const uno::Reference<css::chart2::XTitle>& title) {
  std::string text;
  for (const auto& part : title->getText()) text += fromOffice(part->getString());
  return text;
}

}  // namespace

std::shared_ptr<Chart> readChart(const Session& session, const uno::Reference<css::chart2::XChartDocument>& document) {
  auto chart = std::make_shared<Chart>();
  chart->foreign = true;
  chart->type = 0;
  chart->hasLegend = false;
  const uno::Reference<css::chart2::XTitled> titled(document, uno::UNO_QUERY_THROW);
  if (const auto title = titled->getTitleObject(); title.is()) {
    chart->title = std::make_shared<mervane::charts::Title>();
    chart->title->text = titleText(title);
  }
  const auto diagram = document->getFirstDiagram();
  if (!diagram.is()) return chart;
  if (const Properties legend(diagram->getLegend(), uno::UNO_QUERY); legend.is()) {
    legend->getPropertyValue("Show") >>= chart->hasLegend;
  }
  readPlot(session, *chart, diagram);
  return chart;
}

}  // namespace mervane::calc
