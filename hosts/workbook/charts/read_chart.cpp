#include "hosts/workbook/charts/read_chart.h"

#include <pugixml.hpp>

#include "hosts/charts/series_text.h"
#include "hosts/workbook/charts/xml_text.h"

namespace mervane::workbook::charts {
namespace {

/// What a title without a text of its own says where it cannot say the name of the only series.
constexpr const char* automaticTitle = "Chart Title";

std::string paragraphText(const pugi::xml_node& paragraph) {
  std::string text;
  for (const pugi::xml_node run : paragraph.children()) {
    const std::string_view local = localName(run.name());
    if (local == "r" || local == "fld") text += child(run, "t").text().get();
    if (local == "br") text += '\n';
  }
  return text;
}

/// The paragraphs of a rich text, one a line.
std::string richText(const pugi::xml_node& rich) {
  std::string text;
  bool first = true;
  for (const pugi::xml_node paragraph : rich.children()) {
    if (localName(paragraph.name()) != "p") continue;
    if (!first) text += '\n';
    first = false;
    text += paragraphText(paragraph);
  }
  return text;
}

/// The cached text of a reference, or what its cell holds now where nothing is cached.
std::string referredText(ChartHost& host, const pugi::xml_node& reference) {
  const pugi::xml_node point = child(child(reference, "strCache"), "pt");
  if (point) return child(point, "v").text().get();
  const DataSource source = sourceOf(host, child(reference, "f").text().get());
  if (!source.area) return {};
  return cellText(host, source.area->sheet, {source.area->area.firstRow, source.area->area.firstColumn});
}

DataSource referredSource(const ChartHost& host, const pugi::xml_node& parent) {
  for (const char* kind : {"numRef", "strRef", "multiLvlStrRef"}) {
    const pugi::xml_node reference = child(parent, kind);
    if (reference) return sourceOf(host, child(reference, "f").text().get());
  }
  return {};
}

std::shared_ptr<Series> readSeries(ChartHost& host, const pugi::xml_node& node) {
  auto series = std::make_shared<Series>();
  const pugi::xml_node name = child(node, "tx");
  series->name = referredSource(host, name);
  series->name.literal = child(name, "v") ? child(name, "v").text().get() : referredText(host, child(name, "strRef"));
  const char* values = child(node, "val") ? "val" : "yVal";
  const char* categories = child(node, "cat") ? "cat" : "xVal";
  series->values = referredSource(host, child(node, values));
  series->categories = referredSource(host, child(node, categories));
  series->literalValue = static_cast<bool>(child(child(node, values), "numLit"));
  return series;
}

bool isChartGroup(std::string_view local) {
  return local.ends_with("Chart") && local != "Chart";
}

std::int32_t barType(const pugi::xml_node& group) {
  const bool lying = attribute(child(group, "barDir"), "val") == "bar";
  const std::string grouping = attribute(child(group, "grouping"), "val");
  const std::int32_t clustered = lying ? number::clusteredBarChart : number::clusteredColumnChart;
  if (grouping == "stacked") return clustered + 1;
  return grouping == "percentStacked" ? clustered + 2 : clustered;
}

bool hasMarkers(const pugi::xml_node& group) {
  for (const pugi::xml_node series : group.children()) {
    if (localName(series.name()) != "ser") continue;
    if (attribute(child(child(series, "marker"), "symbol"), "val") != "none") return true;
  }
  return false;
}

/// The object model's number of a chart's type; 0 for one that is not known here.
std::int32_t typeOf(const pugi::xml_node& group) {
  const std::string_view local = localName(group.name());
  if (local == "barChart") return barType(group);
  if (local == "lineChart") return hasMarkers(group) ? number::lineMarkersChart : number::lineChart;
  if (local == "areaChart") return number::areaChart;
  if (local == "pieChart") return number::pieChart;
  if (local == "scatterChart") return number::scatterChart;
  if (local == "doughnutChart") return number::doughnutChart;
  if (local == "radarChart") return number::radarChart;
  return local == "bubbleChart" ? number::bubbleChart : 0;
}

void readPlot(ChartHost& host, Chart& chart, const pugi::xml_node& plot) {
  chart.type = 0;
  bool first = true;
  for (const pugi::xml_node group : plot.children()) {
    if (!isChartGroup(localName(group.name()))) continue;
    if (first) chart.type = typeOf(group);
    first = false;
    for (const pugi::xml_node series : group.children()) {
      if (localName(series.name()) == "ser") chart.series.push_back(readSeries(host, series));
    }
  }
}

/// What the application shows by itself: the name of the only series.
std::string ownTitle(const Chart& chart) {
  const bool isNamed = chart.series.size() == 1 && !chart.series.front()->name.empty();
  return isNamed ? chart.series.front()->name.literal : automaticTitle;
}

void readTitle(ChartHost& host, Chart& chart, const pugi::xml_node& node) {
  const pugi::xml_node element = child(node, "title");
  if (!element) {
    // Without a title element a chart with one named series still shows that name, unless the user took it away.
    const bool isNamed = chart.series.size() == 1 && !chart.series.front()->name.empty();
    if (flag(node, "autoTitleDeleted", false) || !isNamed) return;
    chart.title = std::make_shared<Title>();
    chart.title->text = ownTitle(chart);
    return;
  }
  chart.title = std::make_shared<Title>();
  const pugi::xml_node text = child(element, "tx");
  if (child(text, "rich")) {
    chart.title->text = richText(child(text, "rich"));
  } else if (child(text, "strRef")) {
    chart.title->text = referredText(host, child(text, "strRef"));
  } else {
    chart.title->text = ownTitle(chart);
  }
}

}  // namespace

std::shared_ptr<Chart> readChart(ChartHost& host, const std::string& part) {
  pugi::xml_document document;
  if (!document.load_buffer(part.data(), part.size(), pugi::parse_default | pugi::parse_ws_pcdata_single))
    return nullptr;
  const pugi::xml_node space = document.document_element();
  const pugi::xml_node node = child(space, "chart");
  if (localName(space.name()) != "chartSpace" || !node) return nullptr;
  auto chart = std::make_shared<Chart>();
  chart->foreign = true;
  chart->hasLegend = static_cast<bool>(child(node, "legend"));
  readPlot(host, *chart, child(node, "plotArea"));
  readTitle(host, *chart, node);
  return chart;
}

}  // namespace mervane::workbook::charts
