#include "hosts/workbook/charts/write_series.h"

#include "hosts/workbook/charts/write_data.h"
#include "hosts/workbook/charts/write_format.h"

namespace mervane::workbook::charts {
namespace {

/// `c:marker` with a colour that is left automatic taken from the line, so that line and marker are seen as one.
void marker(pugi::xml_node parent, const Chart& chart, const Marker& marker, const Line& line) {
  pugi::xml_node node = parent.append_child("c:marker");
  if (chart.type != number::lineMarkersChart) {
    appendValue(node, "c:symbol", "none");
    return;
  }
  appendValue(node, "c:size", marker.size);
  const std::int32_t background = marker.background == number::automatic ? line.colorIndex : marker.background;
  const std::int32_t foreground = marker.foreground == number::automatic ? line.colorIndex : marker.foreground;
  Fill fill;
  fill.colorIndex = background;
  Line edge;
  edge.colorIndex = foreground;
  if (foreground == number::none) edge.style = number::none;
  spPr(node, fill, edge, false);
}

/// `c:dPt`
void dPt(pugi::xml_node parent, const Chart& chart, std::int32_t index, const Point& point) {
  pugi::xml_node node = parent.append_child("c:dPt");
  appendValue(node, "c:idx", index);
  if (!chart.isLine()) {
    appendFlag(node, "c:invertIfNegative", point.invertIfNegative);
  } else {
    marker(node, chart, point.marker, point.border);
  }
  appendFlag(node, "c:bubble3D", false);
  spPr(node, point.interior, point.border, point.shadow);
}

bool hasSettings(const Series& series, const Point& point) {
  return !point.border.untouched() || !point.interior.untouched() || point.shadow || point.invertIfNegative ||
         !(point.marker == series.marker);
}

void dataPoints(pugi::xml_node parent, const Chart& chart, const Series& series) {
  for (const auto& [position, point] : series.points) {
    if (position <= series.pointCount() && hasSettings(series, *point)) dPt(parent, chart, position - 1, *point);
  }
}

/// `c:dLbls`
void dLbls(pugi::xml_node parent, const Series& series) {
  if (!series.showValues && !series.showCategories) return;
  pugi::xml_node node = parent.append_child("c:dLbls");
  appendFlag(node, "c:showLegendKey", false);
  appendFlag(node, "c:showVal", series.showValues);
  appendFlag(node, "c:showCatName", series.showCategories);
  appendFlag(node, "c:showSerName", false);
  appendFlag(node, "c:showPercent", false);
  appendFlag(node, "c:showBubbleSize", false);
}

}  // namespace

void ser(pugi::xml_node parent, ChartHost& host, const Chart& chart, std::int32_t index) {
  const Series& series = *chart.series[static_cast<std::size_t>(index)];
  pugi::xml_node node = parent.append_child("c:ser");
  appendValue(node, "c:idx", index);
  appendValue(node, "c:order", index);
  tx(node, host, series);
  if (chart.isLine()) {
    spPr(node, {}, series.border, series.shadow);
    marker(node, chart, series.marker, series.border);
  } else {
    spPr(node, series.interior, series.border, series.shadow);
    appendFlag(node, "c:invertIfNegative", series.invertIfNegative);
  }
  dataPoints(node, chart, series);
  dLbls(node, series);
  cat(node, host, series);
  val(node, host, series);
  if (chart.isLine()) appendFlag(node, "c:smooth", series.smooth);
}

}  // namespace mervane::workbook::charts
