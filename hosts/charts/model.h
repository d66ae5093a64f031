#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/objects/numbers.h"
#include "spreadsheet/cell_address.h"

/// What a chart is, without any file or object. Numbers of the object model are kept as they are set, so that
/// reading a member gives back what was put.
namespace mervane::charts {

using sheet::CellAddress;
using sheet::CellArea;
using sheet::SheetArea;

namespace number = hosts::number;

/// Position and size in points.
struct Box {
  double left = 0.0;
  double top = 0.0;
  double width = 0.0;
  double height = 0.0;
  friend bool operator==(const Box&, const Box&) = default;
};

/// The application's size of a new embedded chart.
inline constexpr double defaultChartWidth = 360.0;
inline constexpr double defaultChartHeight = 216.0;

/// A line around or along something.
struct Line {
  std::int32_t colorIndex = number::automatic;
  std::optional<std::int32_t> weight;
  std::int32_t style = number::automatic;
  [[nodiscard]] bool untouched() const { return *this == Line{}; }
  friend bool operator==(const Line&, const Line&) = default;
};

struct Fill {
  std::int32_t colorIndex = number::automatic;
  std::int32_t patternColorIndex = number::automatic;
  std::int32_t pattern = number::automatic;
  [[nodiscard]] bool untouched() const { return *this == Fill{}; }
  friend bool operator==(const Fill&, const Fill&) = default;
};

struct Font {
  std::string name;   ///< empty: the chart's own
  double size = 0.0;  ///< in points; 0: the chart's own
  std::optional<bool> bold;
  std::optional<bool> italic;
  bool strikethrough = false;
  bool superscript = false;
  bool subscript = false;
  std::int32_t underline = number::none;
  std::int32_t colorIndex = number::automatic;
  std::int32_t background = number::automatic;
  [[nodiscard]] bool untouched() const { return *this == Font{}; }
  friend bool operator==(const Font&, const Font&) = default;
};

/// A place inside the chart, as fractions of the chart's size, so that it goes along when the chart is resized.
/// What is not set is the application's to choose.
struct Frame {
  std::optional<double> left;
  std::optional<double> top;
  std::optional<double> width;
  std::optional<double> height;
  [[nodiscard]] bool automatic() const { return *this == Frame{}; }
  friend bool operator==(const Frame&, const Frame&) = default;
};

/// Where a series takes a part of its data from: nowhere, cells, a formula that is no plain reference to cells of
/// this workbook, or a text of its own.
struct DataSource {
  std::optional<SheetArea> area;
  std::string formula;  ///< without the equals sign; only where there is no area
  std::string literal;
  [[nodiscard]] bool empty() const { return !area && formula.empty() && literal.empty(); }
};

struct Marker {
  std::int32_t background = number::automatic;
  std::int32_t foreground = number::automatic;
  std::int32_t size = 5;
  friend bool operator==(const Marker&, const Marker&) = default;
};

/// What one point has of its own.
struct Point {
  Line border;
  Fill interior;
  Marker marker;
  bool shadow = false;
  bool invertIfNegative = false;
};

struct Series {
  DataSource name;
  DataSource categories;
  DataSource values;
  bool literalValue = false;  ///< a new series holds the one value 1
  Line border;
  Fill interior;
  Marker marker;
  bool smooth = false;
  bool shadow = false;
  bool invertIfNegative = false;
  bool showValues = false;
  bool showCategories = false;
  std::map<std::int32_t, std::shared_ptr<Point>> points;  ///< by position from 1
  bool deleted = false;

  /// How many points the values have.
  [[nodiscard]] std::int32_t pointCount() const;
};

struct Axis {
  std::int32_t type = number::categoryAxis;
  std::int32_t crosses = number::automatic;
  bool reversed = false;
  bool hasMajorGridlines = false;
  bool hasMinorGridlines = false;
  Line majorGridlines;
  Line border;
  Font tickLabels;
  // Of a category axis.
  std::int32_t tickMarkSpacing = 1;
  std::int32_t tickLabelSpacing = 1;
  bool labelSpacingSet = false;  ///< else the application leaves out labels that have no room
  bool baseUnitIsAuto = true;
  bool betweenCategories = true;
  // Of a value axis.
  bool majorUnitIsAuto = true;
  bool minorUnitIsAuto = true;
  std::int32_t scaleType = number::linear;
  std::int32_t displayUnit = number::none;
};

/// What files and offices call a display unit of an axis, such as "thousands". There is one for each but `none`.
[[nodiscard]] const char* displayUnitName(std::int32_t unit);

struct Title {
  std::string text;
  Frame frame;  ///< a title has a place and no size
  Font font;
  bool autoScaleFont = true;
};

struct Legend {
  std::int32_t position = number::legendRight;
  Frame frame;
  Line border;
  Fill interior;
  Font font;
  bool shadow = false;
};

struct PlotArea {
  Frame frame;  ///< outer frame: tick labels lie inside it
  Line border;
  Fill interior;
};

struct ChartArea {
  Line border;
  Fill interior;
  bool shadow = false;
};

struct Chart {
  static constexpr std::int32_t ownSheet = -1;

  std::int32_t sheet = ownSheet;  ///< worksheet that it lies in
  std::string name;               ///< such as "Chart 1"
  std::int32_t type = number::clusteredColumnChart;
  std::vector<std::shared_ptr<Series>> series;
  std::shared_ptr<Title> title;  ///< empty: the chart has none
  bool hasLegend = true;
  Legend legend;
  PlotArea plotArea;
  ChartArea area;
  Axis category;
  Axis value;
  /// Came with the file: can be seen, moved and deleted, but not restyled.
  bool foreign = false;
  bool deleted = false;

  Chart();
  /// Whether its series are lines; others are columns or bars.
  [[nodiscard]] bool isLine() const noexcept;
};

}  // namespace mervane::charts
