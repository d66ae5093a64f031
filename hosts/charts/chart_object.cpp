#include "hosts/charts/chart_object.h"

#include "hosts/charts/area_objects.h"
#include "hosts/charts/axis_objects.h"
#include "hosts/charts/series_objects.h"
#include "hosts/charts/source_data.h"
#include "mervane/convert.h"

namespace mervane::charts {
namespace {

namespace member = sheet::member;

/// What the application shows as the title of a chart that was given none.
constexpr const char* defaultTitle = "Chart Title";

bool isWritableType(std::int32_t type) {
  return type == number::lineChart || type == number::lineMarkersChart || type == number::clusteredColumnChart ||
         type == number::clusteredBarChart;
}

}  // namespace

Variant ChartObject::hasTitle(const Call& call) {
  if (!call.isPut()) return chart().title != nullptr;
  if (!call.assigned<bool>()) {
    chart().title.reset();
  } else if (!chart().title) {
    chart().title = std::make_shared<Title>();
    chart().title->text = defaultTitle;
  }
  return {};
}

Variant ChartObject::type(const Call& call) {
  if (!call.isPut() && chart().type == 0) refuse("The chart is of a type that has no number here.");
  return call.property(chart().type, isWritableType);
}

Variant ChartObject::location(const Call& call) {
  if (call.isPut()) refuseMember();
  requireOwn();
  if (call.integer(0) != number::locationAsObject) refuse("A chart can only be moved into a worksheet.");
  const std::string name = toText(call.at(1), englishLocale());
  const auto sheet = book().host().sheetNamed(name);
  if (!sheet) refuse("The workbook has no worksheet named \"" + name + "\".");
  book().embed(chartRef(), *sheet);
  return sheet::ObjectRef(std::make_shared<ChartObject>(bookRef(), chartRef()));
}

Variant ChartObject::axis(const Call& call) {
  const std::int32_t type = call.integer(0);
  const std::int32_t group = call.has(1) ? call.integer(1) : number::primaryGroup;
  if (group != number::primaryGroup) refuse("The chart has no secondary axes.");
  if (type == number::categoryAxis) return call.readOnly(make<AxisObject>(part(chart().category)));
  if (type == number::valueAxis) return call.readOnly(make<AxisObject>(part(chart().value)));
  refuse("The chart has no axis of that type.");
}

void ChartObject::applyDataLabels(const Call& call) {
  if (call.isPut()) refuseMember();
  requireOwn();
  const std::int32_t type = call.has(0) ? call.integer(0) : number::labelsShowValue;
  if (type != number::labelsShowValue && type != number::labelsShowLabel && type != number::none) {
    refuse("Data labels show values, categories or nothing.");
  }
  for (const auto& series : chart().series) {
    series->showValues = type == number::labelsShowValue;
    series->showCategories = type == number::labelsShowLabel;
  }
}

void ChartObject::setSourceData(const Call& call) {
  if (call.isPut()) refuseMember();
  requireOwn();
  const auto area = book().host().areaOf(call.at(0));
  if (!area) refuse("The source of a chart is a range.");
  const std::int32_t plotBy = call.has(1)                                ? call.integer(1)
                              : area->area.columns() > area->area.rows() ? number::rowsAreSeries
                                                                         : number::columnsAreSeries;
  if (plotBy != number::rowsAreSeries && plotBy != number::columnsAreSeries) refuse("Series are rows or columns.");
  takeSource(book().host(), chart(), *area, plotBy == number::rowsAreSeries);
}

Variant ChartObject::answer(const Call& call) {
  switch (call.member()) {
    case member::Name:
      return call.readOnly(chart().name);
    case member::HasTitle:
      return hasTitle(call);
    case member::ChartTitle:
      if (!chart().title) refuse("The chart has no title.");
      return call.readOnly(make<ChartTitleObject>(chart().title));
    case member::ChartType:
      return type(call);
    case member::Location:
      return location(call);
    case member::SetSourceData:
      setSourceData(call);
      return {};
    case member::SeriesCollection: {
      const auto series = std::make_shared<SeriesCollectionObject>(bookRef(), chartRef());
      if (call.has(0) && !call.isPut()) return series->item(call.at(0));
      return call.readOnly(sheet::ObjectRef(series));
    }
    case member::ApplyDataLabels:
      applyDataLabels(call);
      return {};
    case member::HasLegend:
      return call.property(chart().hasLegend);
    case member::Legend:
      if (!chart().hasLegend) refuse("The chart has no legend.");
      return call.readOnly(make<LegendObject>());
    case member::PlotArea:
      return call.readOnly(make<PlotAreaObject>());
    case member::ChartArea:
      return call.readOnly(make<ChartAreaObject>());
    case member::Axes:
      return axis(call);
    default:
      refuseMember();
  }
}

}  // namespace mervane::charts
