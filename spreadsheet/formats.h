#pragma once

#include <cstdint>
#include <string>

#include "spreadsheet/proxy.h"

namespace mervane::sheet {

/// Values of the object model that formats take.
inline constexpr std::int32_t automatic = -4105;
inline constexpr std::int32_t none = -4142;
inline constexpr std::int32_t lineContinuous = 1;
inline constexpr std::int32_t lineDotted = -4118;
inline constexpr std::int32_t weightHairline = 1;
inline constexpr std::int32_t weightThin = 2;
inline constexpr std::int32_t weightMedium = -4138;
inline constexpr std::int32_t patternSolid = 1;
/// Indexes of the borders of a range.
inline constexpr std::int32_t edgeLeft = 7;
inline constexpr std::int32_t edgeTop = 8;
inline constexpr std::int32_t edgeBottom = 9;
inline constexpr std::int32_t edgeRight = 10;
inline constexpr std::int32_t insideVertical = 11;
inline constexpr std::int32_t insideHorizontal = 12;

/// The font of cells, of tick labels, of a legend or of a chart title.
class Font : public Proxy {
 public:
  using Proxy::Proxy;
  void Bold(bool on) const { put(member::Bold, on); }
  void Name(const std::string& name) const { put(member::Name, name); }
  void Size(std::int32_t points) const { put(member::Size, points); }
  void FontStyle(const std::string& style) const { put(member::FontStyle, style); }
  void Strikethrough(bool on) const { put(member::Strikethrough, on); }
  void Superscript(bool on) const { put(member::Superscript, on); }
  void Subscript(bool on) const { put(member::Subscript, on); }
  void OutlineFont(bool on) const { put(member::OutlineFont, on); }
  void Shadow(bool on) const { put(member::Shadow, on); }
  void Underline(std::int32_t style) const { put(member::Underline, style); }
  void ColorIndex(std::int32_t index) const { put(member::ColorIndex, index); }
  void Background(std::int32_t kind) const { put(member::Background, kind); }
};

/// The fill of cells or of a part of a chart.
class Interior : public Proxy {
 public:
  using Proxy::Proxy;
  void Pattern(std::int32_t kind) const { put(member::Pattern, kind); }
  void PatternColorIndex(std::int32_t index) const { put(member::PatternColorIndex, index); }
  /// A number of the palette, or `none`.
  void ColorIndex(std::int32_t index) const { put(member::ColorIndex, index); }
  /// An RGB colour, red in the lowest byte.
  void Color(std::int32_t rgb) const { put(member::Color, rgb); }
};

/// One line: an edge or inner line of a range, a series, a gridline or a frame in a chart.
class Border : public Proxy {
 public:
  using Proxy::Proxy;
  void LineStyle(std::int32_t style) const { put(member::LineStyle, style); }
  void Weight(std::int32_t weight) const { put(member::Weight, weight); }
  void ColorIndex(std::int32_t index) const { put(member::ColorIndex, index); }
};

}  // namespace mervane::sheet
