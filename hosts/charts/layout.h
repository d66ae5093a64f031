#pragma once

#include <cstddef>

#include "hosts/charts/model.h"

/// Where the parts of a chart lie when the chart has the given size in points. What a frame leaves open is worked
/// out here, close to how the application would lay it out.
namespace mervane::charts {

struct Size {
  double width = defaultChartWidth;
  double height = defaultChartHeight;
};

[[nodiscard]] Box titleBox(const Chart& chart, Size size);
[[nodiscard]] Box legendBox(const Chart& chart, Size size);
/// The outer frame of the plot area, tick labels included.
[[nodiscard]] Box plotBox(const Chart& chart, Size size);

enum class Edge { left, top, width, height };

/// Assigns one side of a frame. A part never reaches beyond the chart: a position keeps its place and the extent
/// gives way; an extent that is too large ends at the chart's edge. Raises for what is no length.
/// @param now the part's present box
/// @param keepsExtent whether the extent that was not assigned stays the application's to choose
void assign(Frame& frame, Edge edge, double points, const Box& now, Size size, bool keepsExtent);

/// Width in points of a text in the usual font, by average letter widths.
[[nodiscard]] double textWidth(std::size_t letters, double fontSize);

}  // namespace mervane::charts
