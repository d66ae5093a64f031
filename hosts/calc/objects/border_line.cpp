#include "hosts/calc/objects/border_line.h"

#include <array>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <string>

#include "hosts/calc/office_call.h"
#include "hosts/objects/numbers.h"

namespace mervane::calc {

namespace {

namespace office = css::table::BorderLineStyle;

using hosts::number::automatic;
using hosts::number::continuous;
using hosts::number::doubled;
using hosts::number::hairline;
using hosts::number::medium;
using hosts::number::none;
using hosts::number::thick;
using hosts::number::thin;

struct Style {
  std::int32_t number;
  std::int16_t office;
};
constexpr std::array<Style, 6> styles{{
    {continuous, office::SOLID},
    {hosts::number::dash, office::DASHED},
    {hosts::number::dot, office::DOTTED},
    {doubled, office::DOUBLE},
    {hosts::number::dashDot, office::DASH_DOT},
    {hosts::number::dashDotDot, office::DASH_DOT_DOT},
}};

/// Widths in hundredths of a millimetre, those that the office gives the weights of workbook files.
struct Weight {
  std::int32_t number;
  std::uint32_t width;
  std::uint32_t widest;  ///< that counts as this weight
};
constexpr std::array<Weight, 4> weights{{
    {hairline, 2, 10},
    {thin, 26, 40},
    {medium, 53, 65},
    {thick, 79, 0xFFFFFFFFU},
}};

}  // namespace

std::int32_t LineFormat::style() const {
  if (isNone()) return none;
  for (const Style& one : styles) {
    if (one.office == line_.LineStyle) return one.number;
  }
  return line_.LineStyle == office::FINE_DASHED ? hosts::number::dash : continuous;
}

std::int32_t LineFormat::weight() const {
  if (isNone()) return thin;
  if (style() == doubled) return thick;
  for (const Weight& one : weights) {
    if (line_.LineWidth <= one.widest) return one.number;
  }
  return thick;
}

void LineFormat::setWidth(std::int32_t weight) {
  for (const Weight& one : weights) {
    if (one.number != weight) continue;
    line_.LineWidth = one.width;
    // The office tells the lines that make up a border too, and takes them for what is meant.
    line_.OuterLineWidth = static_cast<std::int16_t>(one.width);
    line_.InnerLineWidth = 0;
    line_.LineDistance = 0;
    return;
  }
  refuse("There is no line weight " + std::to_string(weight) + ".");
}

void LineFormat::style(std::int32_t style) {
  const std::int32_t wanted = style == automatic ? continuous : style;
  if (wanted == none) {
    line_ = {};
    return;
  }
  for (const Style& one : styles) {
    if (one.number != wanted) continue;
    const std::int32_t before = isNone() || this->style() == doubled ? thin : weight();
    setWidth(wanted == doubled ? thick : before);
    line_.LineStyle = one.office;
    if (wanted == doubled) {
      const auto part = static_cast<std::int16_t>(line_.LineWidth / 3);
      line_.OuterLineWidth = line_.InnerLineWidth = line_.LineDistance = part;
    }
    return;
  }
  refuse("There is no line style " + std::to_string(style) + ".");
}

void LineFormat::weight(std::int32_t weight) {
  const bool wasNone = isNone();
  setWidth(weight);
  if (wasNone || line_.LineStyle == office::DOUBLE) line_.LineStyle = office::SOLID;
}

void LineFormat::color(std::int32_t rgb) {
  if (isNone()) style(continuous);
  line_.Color = rgb;
}

}  // namespace mervane::calc
