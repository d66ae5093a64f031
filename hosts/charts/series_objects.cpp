#include "hosts/charts/series_objects.h"

#include <algorithm>

#include "hosts/charts/format_objects.h"
#include "hosts/charts/series_text.h"
#include "mervane/convert.h"
#include "mervane/runtime_errors.h"

namespace mervane::charts {
namespace {

namespace member = sheet::member;

constexpr std::int32_t smallestMarker = 2;
constexpr std::int32_t largestMarker = 72;

bool isMarkerSize(std::int32_t size) {
  return size >= smallestMarker && size <= largestMarker;
}

/// The marker members, which a series and a point share and only lines have.
Variant markerMember(const Call& call, const Chart& chart, Marker& marker) {
  if (!chart.isLine()) refuse("Only the series of a line chart have markers.");
  switch (call.member()) {
    case member::MarkerBackgroundColorIndex:
      return call.property(marker.background, isColorIndex);
    case member::MarkerForegroundColorIndex:
      return call.property(marker.foreground, isColorIndex);
    default:
      return call.property(marker.size, isMarkerSize);
  }
}

void requireFilled(const Chart& chart) {
  if (chart.isLine()) refuse("A line has no interior and nothing to invert.");
}

void requireAlive(const Series& series) {
  if (series.deleted) refuse("The series has been deleted.");
}

/// The values of the cells, one-dimensional from 1.
Variant cellValues(ChartCells& host, const SheetArea& source) {
  const std::int32_t count = std::max(source.area.rows(), source.area.columns());
  Array<Variant> values({Bounds{1, count}});
  for (std::int32_t i = 0; i < count; ++i) {
    const bool down = source.area.rows() > 1;
    values.at(i + 1) =
        host.cellValue(source.sheet, {source.area.firstRow + (down ? i : 0), source.area.firstColumn + (down ? 0 : i)});
  }
  return values;
}

}  // namespace

Variant SeriesCollectionObject::item(const Variant& which) const {
  const auto& series = chart().series;
  if (const auto* name = which.getIf<std::string>()) {
    for (std::size_t i = 0; i < series.size(); ++i) {
      if (nameOf(book().host(), chart(), i) == *name) return make<SeriesObject>(series[i]);
    }
    refuse("The chart has no series of that name.");
  }
  const std::int32_t index = toInt32(which, englishLocale());
  if (index < 1 || static_cast<std::size_t>(index) > series.size()) refuse("The chart has no series at that position.");
  return make<SeriesObject>(series[static_cast<std::size_t>(index - 1)]);
}

Variant SeriesCollectionObject::answer(const Call& call) {
  auto& series = chart().series;
  switch (call.member()) {
    case member::Count:
      return call.readOnly(static_cast<std::int32_t>(series.size()));
    case member::Item:
      return call.readOnly(item(call.at(0)));
    case member::NewSeries: {
      if (call.isPut()) refuseMember();
      requireOwn();
      if (series.size() >= mostSeries) refuse("A chart takes at most 255 series.");
      series.push_back(std::make_shared<Series>());
      series.back()->literalValue = true;
      return make<SeriesObject>(series.back());
    }
    case member::NewEnum: {
      std::vector<sheet::ObjectRef> elements;
      for (const auto& one : series) elements.push_back(make<SeriesObject>(one).object());
      return call.readOnly(enumeratorOf(std::move(elements)));
    }
    default:
      refuseMember();
  }
}

std::size_t SeriesObject::position() const {
  const auto& all = chart().series;
  return static_cast<std::size_t>(std::find(all.begin(), all.end(), series_) - all.begin());
}

Variant SeriesObject::name(const Call& call) {
  if (!call.isPut()) return nameOf(book().host(), chart(), position());
  const std::string text = call.assigned<std::string>();
  if (text.starts_with('=')) {
    series_->name = sourceOf(book().host(), text.substr(1));
    if (!series_->name.area) refuse("The name's formula must refer to one cell of a worksheet.");
  } else {
    series_->name = {};
    series_->name.literal = text;
  }
  return {};
}

Variant SeriesObject::categories(const Call& call) {
  if (!call.isPut()) {
    if (!series_->categories.area) return {};
    return cellValues(book().host(), *series_->categories.area);
  }
  const auto area = book().host().areaOf(call.value());
  if (!area) refuse("Categories are taken from a range.");
  if (area->area.rows() > 1 && area->area.columns() > 1) refuse("Categories stand in one row or in one column.");
  // The categories belong to the chart: its first series decides for all that have none of their own.
  series_->categories = {};
  series_->categories.area = *area;
  return {};
}

void SeriesObject::remove() {
  requireOwn();
  series_->deleted = true;
  std::erase(chart().series, series_);
}

Variant SeriesObject::answer(const Call& call) {
  requireAlive(*series_);
  switch (call.member()) {
    case member::Formula:
      return call.readOnly(seriesFormula(book().host(), *series_, position() + 1));
    case member::Name:
      return name(call);
    case member::XValues:
      return categories(call);
    case member::Delete:
      if (call.isPut()) refuseMember();
      remove();
      return {};
    case member::Border:
      return call.readOnly(make<BorderObject>(std::shared_ptr<Line>(series_, &series_->border)));
    case member::Interior:
      requireFilled(chart());
      return call.readOnly(make<InteriorObject>(std::shared_ptr<Fill>(series_, &series_->interior)));
    case member::MarkerBackgroundColorIndex:
    case member::MarkerForegroundColorIndex:
    case member::MarkerSize:
      return markerMember(call, chart(), series_->marker);
    case member::Smooth:
      if (!chart().isLine()) refuse("Only a line can be smooth.");
      return call.property(series_->smooth);
    case member::Shadow:
      return call.property(series_->shadow);
    case member::InvertIfNegative:
      requireFilled(chart());
      return call.property(series_->invertIfNegative);
    case member::Points: {
      auto points = std::make_shared<PointsObject>(bookRef(), chartRef(), series_);
      if (call.has(0) && !call.isPut()) return points->item(call.integer(0));
      return call.readOnly(sheet::ObjectRef(points));
    }
    default:
      refuseMember();
  }
}

Variant PointsObject::item(std::int32_t index) const {
  if (index < 1 || index > series_->pointCount()) refuse("The series has no point at that position.");
  return make<PointObject>(series_, index);
}

Variant PointsObject::answer(const Call& call) {
  requireAlive(*series_);
  switch (call.member()) {
    case member::Count:
      return call.readOnly(series_->pointCount());
    case member::Item:
      return call.readOnly(item(call.integer(0)));
    case member::NewEnum: {
      std::vector<sheet::ObjectRef> elements;
      for (std::int32_t i = 1; i <= series_->pointCount(); ++i) elements.push_back(item(i).object());
      return call.readOnly(enumeratorOf(std::move(elements)));
    }
    default:
      refuseMember();
  }
}

Variant PointObject::answer(const Call& call) {
  requireAlive(*series_);
  if (index_ > series_->pointCount()) refuse("The series has lost that point.");
  std::shared_ptr<Point>& slot = series_->points[index_];
  if (!slot) {
    slot = std::make_shared<Point>();
    slot->marker = series_->marker;
  }
  const std::shared_ptr<Point> point = slot;
  switch (call.member()) {
    case member::Border:
      return call.readOnly(make<BorderObject>(std::shared_ptr<Line>(point, &point->border)));
    case member::Interior:
      requireFilled(chart());
      return call.readOnly(make<InteriorObject>(std::shared_ptr<Fill>(point, &point->interior)));
    case member::MarkerBackgroundColorIndex:
    case member::MarkerForegroundColorIndex:
    case member::MarkerSize:
      return markerMember(call, chart(), point->marker);
    case member::Shadow:
      return call.property(point->shadow);
    case member::InvertIfNegative:
      requireFilled(chart());
      return call.property(point->invertIfNegative);
    default:
      refuseMember();
  }
}

}  // namespace mervane::charts
