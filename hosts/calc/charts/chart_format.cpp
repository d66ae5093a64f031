#include "hosts/calc/charts/chart_format.h"

#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/awt/FontStrikeout.hpp>
#include <com/sun/star/awt/FontUnderline.hpp>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/drawing/DashStyle.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>
#include <com/sun/star/drawing/LineDash.hpp>
#include <com/sun/star/drawing/LineStyle.hpp>
#include <string>

#include "spreadsheet/palette.h"

namespace mervane::calc {

namespace number = mervane::charts::number;

namespace {

/// Line widths in hundredths of a millimetre: a quarter of a point, one, two and three points.
sal_Int32 widthOf(std::int32_t weight) {
  switch (weight) {
    case number::hairline:
      return 9;
    case number::medium:
      return 71;
    case number::thick:
      return 106;
    default:
      return 35;
  }
}

/// A dash in percent of the line's width.
css::drawing::LineDash dashOf(std::int32_t style) {
  css::drawing::LineDash dash;
  dash.Style = css::drawing::DashStyle_RECTRELATIVE;
  dash.Distance = 300;
  switch (style) {
    case number::dot:
      dash.Dots = 1;
      dash.DotLen = 100;
      dash.Distance = 100;
      break;
    case number::dashDot:
      dash.Dots = 1;
      dash.DotLen = 100;
      dash.Dashes = 1;
      dash.DashLen = 400;
      break;
    case number::dashDotDot:
      dash.Dots = 2;
      dash.DotLen = 100;
      dash.Dashes = 1;
      dash.DashLen = 800;
      break;
    default:
      dash.Dashes = 1;
      dash.DashLen = 400;
      break;
  }
  return dash;
}

bool isDashed(std::int32_t style) {
  return style == number::dash || style == number::dot || style == number::dashDot || style == number::dashDotDot;
}

}  // namespace

void setProperty(const Properties& part, const char* name, const uno::Any& value) {
  part->setPropertyValue(rtl::OUString::createFromAscii(name), value);
}

std::optional<std::int32_t> colorOf(std::int32_t colorIndex) {
  if (colorIndex < 1) return std::nullopt;
  return static_cast<std::int32_t>(sheet::paletteColor(colorIndex));
}

void setLine(const Properties& part, const mervane::charts::Line& line, std::optional<std::int32_t> otherwise,
             LineKind kind) {
  if (line.untouched()) return;
  const std::string prefix = kind == LineKind::line ? "Line" : "Border";
  const auto set = [&](const char* name, const uno::Any& value) { setProperty(part, (prefix + name).c_str(), value); };
  if (line.style == number::none) return set("Style", uno::Any(css::drawing::LineStyle_NONE));
  const bool dashed = isDashed(line.style);
  set("Style", uno::Any(dashed ? css::drawing::LineStyle_DASH : css::drawing::LineStyle_SOLID));
  if (dashed) set("Dash", uno::Any(dashOf(line.style)));
  if (line.weight) set("Width", uno::Any(widthOf(*line.weight)));
  const std::optional<std::int32_t> color = line.colorIndex > 0 ? colorOf(line.colorIndex) : otherwise;
  // The colour of a series' own line is the series' colour, which its caller sets.
  if (color) set("Color", uno::Any(*color));
}

void setFill(const Properties& part, const mervane::charts::Fill& fill, const char* color) {
  if (fill.pattern == number::none || fill.colorIndex == number::none) {
    return setProperty(part, "FillStyle", uno::Any(css::drawing::FillStyle_NONE));
  }
  const std::optional<std::int32_t> rgb = colorOf(fill.colorIndex);
  if (!rgb) return;
  setProperty(part, "FillStyle", uno::Any(css::drawing::FillStyle_SOLID));
  setProperty(part, color, uno::Any(*rgb));
}

void setFont(const Properties& part, const mervane::charts::Font& font) {
  if (font.untouched()) return;
  const auto set = [&](const char* name, const uno::Any& value) { setProperty(part, name, value); };
  if (!font.name.empty()) {
    set("CharFontName", uno::Any(toOffice(font.name)));
    set("CharFontNameComplex", uno::Any(toOffice(font.name)));
  }
  if (font.size > 0.0) set("CharHeight", uno::Any(static_cast<float>(font.size)));
  if (font.bold) set("CharWeight", uno::Any(*font.bold ? css::awt::FontWeight::BOLD : css::awt::FontWeight::NORMAL));
  if (font.italic) set("CharPosture", uno::Any(*font.italic ? css::awt::FontSlant_ITALIC : css::awt::FontSlant_NONE));
  set("CharStrikeout", uno::Any(font.strikethrough ? css::awt::FontStrikeout::SINGLE : css::awt::FontStrikeout::NONE));
  sal_Int16 underline = css::awt::FontUnderline::NONE;
  if (font.underline == number::singleUnderline) underline = css::awt::FontUnderline::SINGLE;
  if (font.underline == number::doubleUnderline) underline = css::awt::FontUnderline::DOUBLE;
  set("CharUnderline", uno::Any(underline));
  if (const auto color = colorOf(font.colorIndex)) set("CharColor", uno::Any(*color));
  if (font.superscript || font.subscript) {
    refuse("The texts of the office's charts are not raised or lowered.");
  }
}

}  // namespace mervane::calc
