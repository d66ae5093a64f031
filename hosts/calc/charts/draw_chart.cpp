#include "hosts/calc/charts/draw_chart.h"

#include <com/sun/star/chart/ChartLegendExpansion.hpp>
#include <com/sun/star/chart/MissingValueTreatment.hpp>
#include <com/sun/star/chart2/LegendPosition.hpp>
#include <com/sun/star/chart2/RelativePosition.hpp>
#include <com/sun/star/chart2/RelativeSize.hpp>
#include <com/sun/star/chart2/XChartTypeContainer.hpp>
#include <com/sun/star/chart2/XCoordinateSystemContainer.hpp>
#include <com/sun/star/chart2/XFormattedString2.hpp>
#include <com/sun/star/chart2/XLegend.hpp>
#include <com/sun/star/chart2/XTitle.hpp>
#include <com/sun/star/chart2/XTitled.hpp>
#include <com/sun/star/chart2/data/XDataReceiver.hpp>

#include "hosts/calc/charts/chart_format.h"
#include "hosts/calc/charts/chart_parts.h"
#include "hosts/calc/charts/draw_axes.h"
#include "hosts/calc/charts/draw_series.h"
#include "mervane/variant.h"

namespace mervane::calc {

namespace number = mervane::charts::number;
using mervane::charts::Box;
using mervane::charts::Chart;
using mervane::charts::Size;

namespace {

constexpr std::int32_t black = 0;

css::chart2::RelativePosition relativePosition(double left, double top) {
  return {left, top, css::drawing::Alignment_TOP_LEFT};
}

void drawTitle(const Session& session, const uno::Reference<css::chart2::XChartDocument>& document,
               const Chart& chart) {
  const uno::Reference<css::chart2::XTitled> titled(document, uno::UNO_QUERY_THROW);
  if (!chart.title) return titled->setTitleObject({});
  const auto title = makeChartPart<css::chart2::XTitle>(session, "com.sun.star.chart2.Title");
  const auto text = makeChartPart<css::chart2::XFormattedString>(session, "com.sun.star.chart2.FormattedString");
  text->setString(toOffice(chart.title->text));
  setFont(Properties(text, uno::UNO_QUERY_THROW), chart.title->font);
  title->setText(uno::Sequence<uno::Reference<css::chart2::XFormattedString>>(&text, 1));
  titled->setTitleObject(title);
  const mervane::charts::Frame& frame = chart.title->frame;
  if (frame.left || frame.top) {
    setProperty(Properties(title, uno::UNO_QUERY_THROW), "RelativePosition",
                uno::Any(relativePosition(frame.left.value_or(0.0), frame.top.value_or(0.0))));
  }
}

css::chart2::LegendPosition legendPosition(std::int32_t position) {
  switch (position) {
    case number::legendTop:
      return css::chart2::LegendPosition_PAGE_START;
    case number::legendBottom:
      return css::chart2::LegendPosition_PAGE_END;
    case number::legendLeft:
      return css::chart2::LegendPosition_LINE_START;
    default:
      return css::chart2::LegendPosition_LINE_END;
  }
}

void drawLegend(const Session& session, const uno::Reference<css::chart2::XDiagram>& diagram, const Chart& chart,
                Size size) {
  if (!chart.hasLegend) return diagram->setLegend({});
  const auto legend = makeChartPart<css::chart2::XLegend>(session, "com.sun.star.chart2.Legend");
  const Properties part(legend, uno::UNO_QUERY_THROW);
  setProperty(part, "Show", uno::Any(true));
  setProperty(part, "AnchorPosition", uno::Any(legendPosition(chart.legend.position)));
  const bool across = chart.legend.position == number::legendTop || chart.legend.position == number::legendBottom;
  setProperty(part, "Expansion",
              uno::Any(across ? css::chart::ChartLegendExpansion_WIDE : css::chart::ChartLegendExpansion_HIGH));
  if (!chart.legend.frame.automatic()) {
    const Box box = mervane::charts::legendBox(chart, size);
    setProperty(part, "RelativePosition", uno::Any(relativePosition(box.left / size.width, box.top / size.height)));
    setProperty(part, "RelativeSize",
                uno::Any(css::chart2::RelativeSize(box.width / size.width, box.height / size.height)));
    setProperty(part, "Expansion", uno::Any(css::chart::ChartLegendExpansion_CUSTOM));
  }
  setLine(part, chart.legend.border, black);
  setFill(part, chart.legend.interior);
  setFont(part, chart.legend.font);
  diagram->setLegend(legend);
}

void drawPlotArea(const uno::Reference<css::chart2::XDiagram>& diagram, const Chart& chart, Size size) {
  const Properties wall(diagram->getWall(), uno::UNO_QUERY_THROW);
  setLine(wall, chart.plotArea.border, black);
  setFill(wall, chart.plotArea.interior);
  if (chart.plotArea.frame.automatic()) return;
  const Box box = mervane::charts::plotBox(chart, size);
  const Properties part(diagram, uno::UNO_QUERY_THROW);
  // The frame is the outer one: tick labels lie inside it.
  setProperty(part, "PosSizeExcludeAxes", uno::Any(false));
  setProperty(part, "RelativePosition", uno::Any(relativePosition(box.left / size.width, box.top / size.height)));
  setProperty(part, "RelativeSize",
              uno::Any(css::chart2::RelativeSize(box.width / size.width, box.height / size.height)));
}

/// Whether a value of any series is an error, such as that of a cluster without members.
bool holdsErrors(Session& session, const Chart& chart) {
  for (const auto& series : chart.series) {
    if (!series->values.area) continue;
    const SheetArea& place = *series->values.area;
    for (std::int32_t row = place.area.firstRow; row <= place.area.lastRow; ++row) {
      for (std::int32_t column = place.area.firstColumn; column <= place.area.lastColumn; ++column) {
        if (session.value(place.sheet, {row, column}).getIf<ErrorValue>() != nullptr) return true;
      }
    }
  }
  return false;
}

/// What gives the chart the cells of the document; a chart that never had data has none yet.
uno::Reference<css::chart2::data::XDataProvider> providerOf(
    const Session& session, const uno::Reference<css::chart2::XChartDocument>& document) {
  const auto known = document->getDataProvider();
  if (known.is()) return known;
  const uno::Reference<css::chart2::data::XDataReceiver> receiver(document, uno::UNO_QUERY_THROW);
  receiver->attachDataProvider(session.make<css::chart2::data::XDataProvider>("com.sun.star.chart2.data.DataProvider"));
  return document->getDataProvider();
}

void drawData(Session& session, const uno::Reference<css::chart2::XChartDocument>& document,
              const uno::Reference<css::chart2::XDiagram>& diagram, const Chart& chart) {
  const auto system =
      makeChartPart<css::chart2::XCoordinateSystem>(session, "com.sun.star.chart2.CartesianCoordinateSystem2d");
  const uno::Reference<css::chart2::XCoordinateSystemContainer> systems(diagram, uno::UNO_QUERY_THROW);
  systems->addCoordinateSystem(system);
  if (chart.type == number::clusteredBarChart) {
    setProperty(Properties(system, uno::UNO_QUERY_THROW), "SwapXAndYAxis", uno::Any(true));
  }
  const uno::Reference<css::chart2::XChartTypeContainer> types(system, uno::UNO_QUERY_THROW);
  const auto provider = providerOf(session, document);
  if (!provider.is()) refuse("The chart is not tied to the document.");
  types->addChartType(drawnSeries(session, provider, chart));
  drawAxes(session, provider, system, chart);
  // An error such as #N/A is no blank: a line goes on across it.
  const sal_Int32 treatment = chart.isLine() && holdsErrors(session, chart)
                                  ? css::chart::MissingValueTreatment::CONTINUE
                                  : css::chart::MissingValueTreatment::LEAVE_GAP;
  setProperty(Properties(diagram, uno::UNO_QUERY_THROW), "MissingValueTreatment", uno::Any(treatment));
}

}  // namespace

void drawChart(Session& session, const uno::Reference<css::chart2::XChartDocument>& document, const Chart& chart,
               Size size) {
  if (!document.is()) refuse("The chart is not there any more.");
  const uno::Reference<css::frame::XModel> model(document, uno::UNO_QUERY_THROW);
  model->lockControllers();
  try {
    const auto diagram = makeChartPart<css::chart2::XDiagram>(session, "com.sun.star.chart2.Diagram");
    drawData(session, document, diagram, chart);
    document->setFirstDiagram(diagram);
    drawTitle(session, document, chart);
    drawLegend(session, diagram, chart, size);
    drawPlotArea(diagram, chart, size);
    const Properties background(document->getPageBackground(), uno::UNO_QUERY_THROW);
    setFill(background, chart.area.interior);
    setLine(background, chart.area.border, black);
  } catch (...) {
    model->unlockControllers();
    throw;
  }
  model->unlockControllers();
}

}  // namespace mervane::calc
