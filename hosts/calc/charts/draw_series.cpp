#include "hosts/calc/charts/draw_series.h"

#include <algorithm>
#include <com/sun/star/chart2/CurveStyle.hpp>
#include <com/sun/star/chart2/DataPointLabel.hpp>
#include <com/sun/star/chart2/Symbol.hpp>
#include <com/sun/star/chart2/SymbolStyle.hpp>
#include <com/sun/star/chart2/XDataSeries.hpp>
#include <com/sun/star/chart2/XDataSeriesContainer.hpp>
#include <com/sun/star/chart2/data/XDataSink.hpp>
#include <com/sun/star/chart2/data/XLabeledDataSequence.hpp>

#include "hosts/calc/charts/chart_format.h"
#include "hosts/calc/charts/chart_parts.h"
#include "hosts/calc/charts/chart_reference.h"
#include "hosts/calc/points.h"

namespace mervane::calc {

namespace number = mervane::charts::number;
using mervane::charts::Chart;
using mervane::charts::Point;
using mervane::charts::Series;

namespace {

using Provider = uno::Reference<css::chart2::data::XDataProvider>;
using Sequence = uno::Reference<css::chart2::data::XDataSequence>;
using SeriesRef = uno::Reference<css::chart2::XDataSeries>;

constexpr sal_Int32 gapWidth = 100;  ///< between columns, in percent of one

Sequence sequenceOf(const Provider& provider, const rtl::OUString& reference, const char* role) {
  const Sequence sequence = provider->createDataSequenceByRangeRepresentation(reference);
  if (!sequence.is()) refuse("The cells \"" + fromOffice(reference) + "\" give a chart no data.");
  setProperty(Properties(sequence, uno::UNO_QUERY_THROW), "Role", uno::Any(rtl::OUString::createFromAscii(role)));
  return sequence;
}

void setData(const Session& session, const Provider& provider, const SeriesRef& part, const Series& series) {
  if (!series.values.area) refuse("A series takes its values from no cells.");
  const auto labeled =
      makeChartPart<css::chart2::data::XLabeledDataSequence>(session, "com.sun.star.chart2.data.LabeledDataSequence");
  labeled->setValues(sequenceOf(provider, chartReference(session, *series.values.area), "values-y"));
  if (series.name.area) {
    labeled->setLabel(sequenceOf(provider, chartReference(session, *series.name.area), "label"));
  } else if (!series.name.literal.empty()) {
    labeled->setLabel(sequenceOf(provider, quotedText(series.name.literal), "label"));
  }
  const uno::Reference<css::chart2::data::XDataSink> sink(part, uno::UNO_QUERY_THROW);
  sink->setData(uno::Sequence<uno::Reference<css::chart2::data::XLabeledDataSequence>>(&labeled, 1));
}

/// A marker with a colour that is left automatic taken from the line, so that line and marker are seen as one.
void setMarker(const Properties& part, const Chart& chart, const mervane::charts::Marker& marker,
               std::int32_t lineColor) {
  css::chart2::Symbol symbol;
  symbol.Style = css::chart2::SymbolStyle_NONE;
  if (chart.type == number::lineMarkersChart) {
    symbol.Style = css::chart2::SymbolStyle_AUTO;
    const sal_Int32 size = toHundredths(marker.size);
    symbol.Size = {size, size};
    const auto background = colorOf(marker.background == number::automatic ? lineColor : marker.background);
    const auto foreground = colorOf(marker.foreground == number::automatic ? lineColor : marker.foreground);
    if (background) symbol.FillColor = *background;
    if (foreground) symbol.BorderColor = *foreground;
  }
  setProperty(part, "Symbol", uno::Any(symbol));
}

void setLook(const Properties& part, const Chart& chart, const mervane::charts::Line& border,
             const mervane::charts::Fill& interior, const mervane::charts::Marker& marker) {
  if (chart.isLine()) {
    setLine(part, border);
    if (const auto color = colorOf(border.colorIndex)) setProperty(part, "Color", uno::Any(*color));
    setMarker(part, chart, marker, border.colorIndex);
  } else {
    setLine(part, border, {}, LineKind::border);
    setFill(part, interior, "Color");
  }
}

bool hasSettings(const Series& series, const Point& point) {
  return !point.border.untouched() || !point.interior.untouched() || !(point.marker == series.marker);
}

void refuseShadow() {
  refuse("The series of the office's charts have no shadow and are not inverted.");
}

SeriesRef drawnOne(const Session& session, const Provider& provider, const Chart& chart, const Series& series) {
  const auto part = makeChartPart<css::chart2::XDataSeries>(session, "com.sun.star.chart2.DataSeries");
  setData(session, provider, part, series);
  const Properties properties(part, uno::UNO_QUERY_THROW);
  setProperty(properties, "VaryColorsByPoint", uno::Any(false));
  if (series.shadow || series.invertIfNegative) refuseShadow();
  setLook(properties, chart, series.border, series.interior, series.marker);
  if (series.showValues || series.showCategories) {
    css::chart2::DataPointLabel label;
    label.ShowNumber = series.showValues;
    label.ShowCategoryName = series.showCategories;
    setProperty(properties, "Label", uno::Any(label));
  }
  for (const auto& [position, point] : series.points) {
    if (position > series.pointCount()) continue;
    if (point->shadow || point->invertIfNegative) refuseShadow();
    if (!hasSettings(series, *point)) continue;
    setLook(part->getDataPointByIndex(position - 1), chart, point->border, point->interior, point->marker);
  }
  return part;
}

}  // namespace

uno::Reference<css::chart2::XChartType> drawnSeries(const Session& session, const Provider& provider,
                                                    const Chart& chart) {
  const auto type = makeChartPart<css::chart2::XChartType>(
      session, chart.isLine() ? "com.sun.star.chart2.LineChartType" : "com.sun.star.chart2.ColumnChartType");
  const Properties properties(type, uno::UNO_QUERY_THROW);
  if (chart.isLine()) {
    const auto isSmooth = [](const auto& series) { return series->smooth; };
    if (std::any_of(chart.series.begin(), chart.series.end(), isSmooth)) {
      if (!std::all_of(chart.series.begin(), chart.series.end(), isSmooth)) {
        refuse("The lines of one of the office's charts are all smooth or none is.");
      }
      setProperty(properties, "CurveStyle", uno::Any(css::chart2::CurveStyle_CUBIC_SPLINES));
    }
  } else {
    const sal_Int32 overlap = 0;
    setProperty(properties, "GapwidthSequence", uno::Any(uno::Sequence<sal_Int32>(&gapWidth, 1)));
    setProperty(properties, "OverlapSequence", uno::Any(uno::Sequence<sal_Int32>(&overlap, 1)));
  }
  const uno::Reference<css::chart2::XDataSeriesContainer> container(type, uno::UNO_QUERY_THROW);
  for (const auto& series : chart.series) container->addDataSeries(drawnOne(session, provider, chart, *series));
  return type;
}

}  // namespace mervane::calc
