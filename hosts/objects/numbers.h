#pragma once

#include <cstdint>

#include "spreadsheet/axis.h"
#include "spreadsheet/chart.h"
#include "spreadsheet/formats.h"
#include "spreadsheet/shape.h"

/// Numbers of the object model: those that the port names, and those that a host meets besides.
namespace mervane::hosts::number {

using sheet::automatic;
using sheet::none;

// Lines and fills.
inline constexpr std::int32_t continuous = sheet::lineContinuous;
inline constexpr std::int32_t dash = -4115;
inline constexpr std::int32_t dashDot = 4;
inline constexpr std::int32_t dashDotDot = 5;
inline constexpr std::int32_t dot = sheet::lineDotted;
inline constexpr std::int32_t doubled = -4119;
inline constexpr std::int32_t slantDashDot = 13;
inline constexpr std::int32_t hairline = sheet::weightHairline;
inline constexpr std::int32_t thin = sheet::weightThin;
inline constexpr std::int32_t medium = sheet::weightMedium;
inline constexpr std::int32_t thick = 4;
inline constexpr std::int32_t solid = sheet::patternSolid;

// Underlines.
inline constexpr std::int32_t singleUnderline = 2;
inline constexpr std::int32_t doubleUnderline = -4119;

// Types of charts.
inline constexpr std::int32_t areaChart = 1;
inline constexpr std::int32_t lineChart = 4;
inline constexpr std::int32_t pieChart = 5;
inline constexpr std::int32_t bubbleChart = 15;
inline constexpr std::int32_t clusteredColumnChart = sheet::chartColumnClustered;
inline constexpr std::int32_t clusteredBarChart = 57;
inline constexpr std::int32_t lineMarkersChart = sheet::chartLineWithMarkers;
inline constexpr std::int32_t doughnutChart = -4120;
inline constexpr std::int32_t radarChart = -4151;
inline constexpr std::int32_t scatterChart = -4169;

// Charts.
inline constexpr std::int32_t locationAsObject = sheet::locationAsObject;
inline constexpr std::int32_t rowsAreSeries = sheet::plotByRows;
inline constexpr std::int32_t columnsAreSeries = sheet::plotByColumns;
inline constexpr std::int32_t labelsShowValue = sheet::labelsShowValue;
inline constexpr std::int32_t labelsShowLabel = 4;
inline constexpr std::int32_t legendTop = sheet::legendAtTop;
inline constexpr std::int32_t legendBottom = -4107;
inline constexpr std::int32_t legendLeft = -4131;
inline constexpr std::int32_t legendRight = -4152;
inline constexpr std::int32_t legendCorner = 2;
inline constexpr std::int32_t shapeIsChart = sheet::shapeTypeChart;

// Axes. A display unit is a number from hundreds down to trillions.
inline constexpr std::int32_t categoryAxis = sheet::axisCategory;
inline constexpr std::int32_t valueAxis = sheet::axisValue;
inline constexpr std::int32_t primaryGroup = sheet::axisGroupPrimary;
inline constexpr std::int32_t linear = sheet::scaleLinear;
inline constexpr std::int32_t logarithmic = -4133;
inline constexpr std::int32_t crossesAtMaximum = 2;
inline constexpr std::int32_t crossesAtMinimum = 4;
inline constexpr std::int32_t hundreds = -2;
inline constexpr std::int32_t trillions = -10;

}  // namespace mervane::hosts::number
