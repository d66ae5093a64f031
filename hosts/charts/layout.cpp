#include "hosts/charts/layout.h"

#include <algorithm>
#include <cmath>

#include "hosts/charts/call.h"
#include "hosts/charts/series_text.h"

namespace mervane::charts {
namespace {

constexpr double defaultFontSize = 10.0;
constexpr double defaultTitleSize = 18.0;
constexpr double lineSpacing = 1.25;
constexpr double averageLetter = 0.54;  ///< of the font size
constexpr double padding = 3.0;
constexpr double lineKeyWidth = 30.0;
constexpr double fillKeyWidth = 9.0;
constexpr double entryGap = 7.0;
constexpr double widestTopLegend = 0.9;   ///< of the chart's width
constexpr double highestTopLegend = 0.5;  ///< of the chart's height, so that a plot is left

std::size_t letterCount(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

double sizeOf(const Font& font, double otherwise) {
  return font.size > 0.0 ? font.size : otherwise;
}

double titleHeight(const Chart& chart) {
  return chart.title ? sizeOf(chart.title->font, defaultTitleSize) * lineSpacing + 2 * padding : 0.0;
}

double legendEntryWidth(const Chart& chart) {
  std::size_t letters = 1;
  for (std::size_t i = 0; i < chart.series.size(); ++i) letters = std::max(letters, letterCount(shownName(chart, i)));
  return (chart.isLine() ? lineKeyWidth : fillKeyWidth) + entryGap +
         textWidth(letters, sizeOf(chart.legend.font, defaultFontSize));
}

bool liesAcross(const Legend& legend) {
  return legend.position == number::legendTop || legend.position == number::legendBottom;
}

/// Size of a legend whose frame leaves it open.
Size automaticLegend(const Chart& chart, Size size) {
  const double entry = legendEntryWidth(chart);
  const double row = sizeOf(chart.legend.font, defaultFontSize) * lineSpacing;
  const double entries = std::max<double>(1.0, static_cast<double>(chart.series.size()));
  if (!liesAcross(chart.legend)) {
    return {std::min(entry + 2 * padding, size.width), std::min(entries * row + 2 * padding, size.height)};
  }
  const Frame& frame = chart.legend.frame;
  const double room = frame.width ? *frame.width * size.width : size.width * widestTopLegend;
  const double perRow = std::clamp(std::floor((room - 2 * padding) / entry), 1.0, entries);
  const double rows = std::ceil(entries / perRow);
  return {std::min(perRow * entry + 2 * padding, size.width),
          std::min(rows * row + 2 * padding, size.height * highestTopLegend)};
}

/// Cuts what an unset side of the frame would let reach beyond the chart.
Box withFrame(Box box, const Frame& frame, Size size) {
  if (frame.width) box.width = *frame.width * size.width;
  if (frame.height) box.height = *frame.height * size.height;
  if (frame.left) box.left = *frame.left * size.width;
  if (frame.top) box.top = *frame.top * size.height;
  return box;
}

}  // namespace

double textWidth(std::size_t letters, double fontSize) {
  return static_cast<double>(letters) * averageLetter * fontSize;
}

Box titleBox(const Chart& chart, Size size) {
  if (!chart.title) return {};
  const double width =
      textWidth(letterCount(chart.title->text), sizeOf(chart.title->font, defaultTitleSize)) + 2 * padding;
  return withFrame({std::max(0.0, (size.width - width) / 2), padding, width, titleHeight(chart)}, chart.title->frame,
                   size);
}

Box legendBox(const Chart& chart, Size size) {
  const Size own = automaticLegend(chart, size);
  Box box{0.0, 0.0, own.width, own.height};
  if (chart.legend.frame.width) box.width = *chart.legend.frame.width * size.width;
  const double middle = std::max(0.0, (size.height - own.height) / 2);
  const double centre = std::max(0.0, (size.width - box.width) / 2);
  switch (chart.legend.position) {
    case number::legendTop:
      box.left = centre;
      box.top = titleHeight(chart) + padding;
      break;
    case number::legendBottom:
      box.left = centre;
      box.top = std::max(0.0, size.height - own.height - padding);
      break;
    case number::legendLeft:
      box.left = padding;
      box.top = middle;
      break;
    case number::legendCorner:
      box.left = std::max(0.0, size.width - box.width - padding);
      box.top = padding;
      break;
    default:
      box.left = std::max(0.0, size.width - box.width - padding);
      box.top = middle;
      break;
  }
  return withFrame(box, chart.legend.frame, size);
}

Box plotBox(const Chart& chart, Size size) {
  double left = padding;
  double top = titleHeight(chart) + padding;
  double right = size.width - padding;
  double bottom = size.height - padding;
  if (chart.hasLegend && chart.legend.frame.automatic()) {
    const Size legend = automaticLegend(chart, size);
    switch (chart.legend.position) {
      case number::legendTop:
        top += legend.height + padding;
        break;
      case number::legendBottom:
        bottom -= legend.height + padding;
        break;
      case number::legendLeft:
        left += legend.width + padding;
        break;
      default:
        right -= legend.width + padding;
        break;
    }
  }
  const Box box{left, top, std::max(0.0, right - left), std::max(0.0, bottom - top)};
  return withFrame(box, chart.plotArea.frame, size);
}

void assign(Frame& frame, Edge edge, double points, const Box& now, Size size, bool keepsExtent) {
  if (!std::isfinite(points)) refuse("A length must be a finite number.");
  const bool across = edge == Edge::left || edge == Edge::width;
  const double whole = across ? size.width : size.height;
  double position = across ? now.left : now.top;
  double extent = across ? now.width : now.height;
  const bool extentAssigned = edge == Edge::width || edge == Edge::height;
  if (extentAssigned) {
    if (points <= 0.0) refuse("A width or height must be above zero.");
    extent = std::min(points, whole);
    // An extent that was asked for takes the room before the place is kept, where the place is not set yet.
    const bool placed = across ? frame.left.has_value() : frame.top.has_value();
    if (placed) {
      extent = std::min(extent, whole - position);
    } else {
      position = std::min(position, whole - extent);
    }
    if (extent <= 0.0) refuse("There is no room for that width or height.");
  } else {
    position = std::clamp(points, 0.0, whole);
    extent = std::min(extent, whole - position);
  }
  std::optional<double>& positionSlot = across ? frame.left : frame.top;
  std::optional<double>& extentSlot = across ? frame.width : frame.height;
  if (!extentAssigned || !keepsExtent) positionSlot = position / whole;
  if (extentAssigned || !keepsExtent || extentSlot) extentSlot = extent / whole;
}

}  // namespace mervane::charts
