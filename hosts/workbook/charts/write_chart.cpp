#include "hosts/workbook/charts/write_chart.h"

#include <pugixml.hpp>

#include "hosts/workbook/charts/namespaces.h"
#include "hosts/workbook/charts/write_data.h"
#include "hosts/workbook/charts/write_format.h"
#include "hosts/workbook/charts/write_series.h"
#include "hosts/workbook/charts/xml_text.h"

namespace mervane::workbook::charts {
namespace {

// The two axes are told apart by these numbers, which mean nothing beyond the part.
constexpr std::int32_t categoryAxisId = 111111111;
constexpr std::int32_t valueAxisId = 222222222;
constexpr std::int32_t black = 1;
constexpr std::int32_t gapWidth = 100;  ///< between columns, in percent of one

/// `c:rich`: the title's lines as paragraphs.
void rich(pugi::xml_node parent, const Title& title) {
  pugi::xml_node node = parent.append_child("c:rich");
  node.append_child("a:bodyPr");
  node.append_child("a:lstStyle");
  std::size_t begin = 0;
  for (;;) {
    const std::size_t end = title.text.find('\n', begin);
    pugi::xml_node paragraph = node.append_child("a:p");
    runProperties(paragraph.append_child("a:pPr"), "a:defRPr", title.font);
    pugi::xml_node run = paragraph.append_child("a:r");
    runProperties(run, "a:rPr", title.font);
    run.child("a:rPr").prepend_attribute("lang") = "en-US";
    appendText(run, "a:t", title.text.substr(begin, end == std::string::npos ? end : end - begin));
    if (end == std::string::npos) return;
    begin = end + 1;
  }
}

/// `c:title`
void title(pugi::xml_node parent, const Chart& chart) {
  if (!chart.title) return;
  pugi::xml_node node = parent.append_child("c:title");
  rich(node.append_child("c:tx"), *chart.title);
  Frame place;
  place.left = chart.title->frame.left;
  place.top = chart.title->frame.top;
  layout(node, place);
  appendFlag(node, "c:overlay", false);
}

/// `c:scaling`
void scaling(pugi::xml_node parent, const Axis& axis) {
  pugi::xml_node node = parent.append_child("c:scaling");
  if (axis.scaleType == number::logarithmic) appendValue(node, "c:logBase", "10");
  appendValue(node, "c:orientation", axis.reversed ? "maxMin" : "minMax");
}

void gridlines(pugi::xml_node parent, const Axis& axis) {
  if (axis.hasMajorGridlines) spPr(parent.append_child("c:majorGridlines"), {}, axis.majorGridlines, false);
  if (axis.hasMinorGridlines) parent.append_child("c:minorGridlines");
}

const char* crossesOf(std::int32_t crosses) {
  if (crosses == number::crossesAtMaximum) return "max";
  return crosses == number::crossesAtMinimum ? "min" : "autoZero";
}

/// What both kinds of axis begin with, up to `c:crosses`.
/// @param other the axis that crosses this one; where it does is told there
void axisStart(pugi::xml_node node, const Axis& axis, const Axis& other, std::int32_t id, std::int32_t otherId,
               const char* position, const std::string& numberFormat) {
  appendValue(node, "c:axId", id);
  scaling(node, axis);
  appendFlag(node, "c:delete", false);
  appendValue(node, "c:axPos", position);
  gridlines(node, axis);
  pugi::xml_node format = node.append_child("c:numFmt");
  format.append_attribute("formatCode") = printable(numberFormat).c_str();
  format.append_attribute("sourceLinked") = "1";
  appendValue(node, "c:majorTickMark", "out");
  appendValue(node, "c:minorTickMark", "none");
  // NB: category labels stand at the low edge, not beside an axis that negative values put across the lines.
  appendValue(node, "c:tickLblPos", axis.type == number::categoryAxis ? "low" : "nextTo");
  spPr(node, {}, axis.border, false);
  txPr(node, axis.tickLabels);
  appendValue(node, "c:crossAx", otherId);
  appendValue(node, "c:crosses", crossesOf(other.crosses));
}

/// `c:catAx`
void catAx(pugi::xml_node parent, const Chart& chart, bool lying) {
  const Axis& axis = chart.category;
  pugi::xml_node node = parent.append_child("c:catAx");
  axisStart(node, axis, chart.value, categoryAxisId, valueAxisId, lying ? "l" : "b", "General");
  appendFlag(node, "c:auto", true);
  appendValue(node, "c:lblAlgn", "ctr");
  appendValue(node, "c:lblOffset", "100");
  if (axis.labelSpacingSet) appendValue(node, "c:tickLblSkip", axis.tickLabelSpacing);
  if (axis.tickMarkSpacing != 1) appendValue(node, "c:tickMarkSkip", axis.tickMarkSpacing);
  appendFlag(node, "c:noMultiLvlLbl", false);
}

/// `c:dispUnits`
void dispUnits(pugi::xml_node parent, std::int32_t unit) {
  if (unit == number::none) return;
  appendValue(parent.append_child("c:dispUnits"), "c:builtInUnit", displayUnitName(unit));
}

/// `c:valAx`
void valAx(pugi::xml_node parent, ChartHost& host, const Chart& chart, bool lying) {
  pugi::xml_node node = parent.append_child("c:valAx");
  axisStart(node, chart.value, chart.category, valueAxisId, categoryAxisId, lying ? "b" : "l",
            valueFormat(host, chart));
  appendValue(node, "c:crossBetween", chart.category.betweenCategories ? "between" : "midCat");
  dispUnits(node, chart.value.displayUnit);
}

void allSeries(pugi::xml_node parent, ChartHost& host, const Chart& chart) {
  for (std::size_t i = 0; i < chart.series.size(); ++i) ser(parent, host, chart, static_cast<std::int32_t>(i));
}

void axIds(pugi::xml_node parent) {
  appendValue(parent, "c:axId", categoryAxisId);
  appendValue(parent, "c:axId", valueAxisId);
}

/// `c:lineChart`
void lineChart(pugi::xml_node parent, ChartHost& host, const Chart& chart) {
  pugi::xml_node node = parent.append_child("c:lineChart");
  appendValue(node, "c:grouping", "standard");
  appendFlag(node, "c:varyColors", false);
  allSeries(node, host, chart);
  appendFlag(node, "c:marker", true);
  axIds(node);
}

/// `c:barChart`
void barChart(pugi::xml_node parent, ChartHost& host, const Chart& chart, bool lying) {
  pugi::xml_node node = parent.append_child("c:barChart");
  appendValue(node, "c:barDir", lying ? "bar" : "col");
  appendValue(node, "c:grouping", "clustered");
  appendFlag(node, "c:varyColors", false);
  allSeries(node, host, chart);
  appendValue(node, "c:gapWidth", gapWidth);
  axIds(node);
}

/// `c:plotArea`
void plotArea(pugi::xml_node parent, ChartHost& host, const Chart& chart) {
  const bool lying = chart.type == number::clusteredBarChart;
  pugi::xml_node node = parent.append_child("c:plotArea");
  layout(node, chart.plotArea.frame);
  if (chart.isLine()) {
    lineChart(node, host, chart);
  } else {
    barChart(node, host, chart, lying);
  }
  catAx(node, chart, lying);
  valAx(node, host, chart, lying);
  spPr(node, chart.plotArea.interior, chart.plotArea.border, false, black);
}

const char* legendPosition(std::int32_t position) {
  switch (position) {
    case number::legendTop:
      return "t";
    case number::legendBottom:
      return "b";
    case number::legendLeft:
      return "l";
    case number::legendCorner:
      return "tr";
    default:
      return "r";
  }
}

/// `c:legend`
void legend(pugi::xml_node parent, const Chart& chart, Size size) {
  if (!chart.hasLegend) return;
  const Legend& legend = chart.legend;
  pugi::xml_node node = parent.append_child("c:legend");
  appendValue(node, "c:legendPos", legendPosition(legend.position));
  Frame frame = legend.frame;
  if (!frame.automatic()) {
    // A place needs a size beside it, or applications disagree about what the place means.
    const Box box = legendBox(chart, size);
    frame = {box.left / size.width, box.top / size.height, box.width / size.width, box.height / size.height};
  }
  layout(node, frame);
  appendFlag(node, "c:overlay", false);
  spPr(node, legend.interior, legend.border, legend.shadow, black);
  txPr(node, legend.font);
}

/// `c:chart`
void chartElement(pugi::xml_node parent, ChartHost& host, const Chart& chart, Size size) {
  pugi::xml_node node = parent.append_child("c:chart");
  title(node, chart);
  appendFlag(node, "c:autoTitleDeleted", !chart.title);
  plotArea(node, host, chart);
  legend(node, chart, size);
  appendFlag(node, "c:plotVisOnly", true);
  // An error such as #N/A is no blank: a line goes on across it. Some applications draw a zero unless told so.
  appendValue(node, "c:dispBlanksAs", chart.isLine() && holdsErrors(host, chart) ? "span" : "gap");
}

/// `c:printSettings`, as the application writes them.
void printSettings(pugi::xml_node parent) {
  pugi::xml_node node = parent.append_child("c:printSettings");
  node.append_child("c:headerFooter");
  pugi::xml_node margins = node.append_child("c:pageMargins");
  margins.append_attribute("b") = "0.75";
  margins.append_attribute("l") = "0.7";
  margins.append_attribute("r") = "0.7";
  margins.append_attribute("t") = "0.75";
  margins.append_attribute("header") = "0.3";
  margins.append_attribute("footer") = "0.3";
  node.append_child("c:pageSetup");
}

}  // namespace

std::string chartPart(ChartHost& host, const Chart& chart, Size size, bool strict) {
  const Namespaces& namespaces = namespacesOf(strict);
  pugi::xml_document document;
  pugi::xml_node node = document.append_child("c:chartSpace");
  node.append_attribute("xmlns:c") = namespaces.chart;
  node.append_attribute("xmlns:a") = namespaces.drawing;
  node.append_attribute("xmlns:r") = namespaces.relations;
  appendFlag(node, "c:roundedCorners", false);
  chartElement(node, host, chart, size);
  spPr(node, chart.area.interior, chart.area.border, chart.area.shadow, black);
  printSettings(node);
  return partText(document);
}

}  // namespace mervane::workbook::charts
