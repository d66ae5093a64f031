#include "hosts/workbook/charts/write_format.h"

#include <array>
#include <cmath>

#include "hosts/workbook/charts/xml_text.h"
#include "mervane/convert.h"
#include "spreadsheet/palette.h"

namespace mervane::workbook::charts {
namespace {

/// Line widths in EMU.
std::int32_t widthOf(std::int32_t weight) {
  switch (weight) {
    case number::hairline:
      return 3175;
    case number::medium:
      return 25400;
    case number::thick:
      return 38100;
    default:
      return 12700;
  }
}

const char* dashOf(std::int32_t style) {
  switch (style) {
    case number::dash:
      return "dash";
    case number::dashDot:
      return "dashDot";
    case number::dashDotDot:
      return "lgDashDotDot";
    case number::dot:
      return "sysDot";
    default:
      return "solid";
  }
}

const char* underlineOf(std::int32_t underline) {
  if (underline == number::singleUnderline) return "sng";
  return underline == number::doubleUnderline ? "dbl" : "none";
}

std::string hexColor(std::int32_t colorIndex) {
  constexpr std::array<char, 16> digits = {'0', '1', '2', '3', '4', '5', '6', '7',
                                           '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
  const std::uint32_t color = sheet::paletteColor(colorIndex);
  std::string text;
  for (std::uint32_t shift = 24; shift > 0; shift -= 4) text += digits[(color >> (shift - 4)) & 0xFU];
  return text;
}

/// `a:effectLst` with the plain shadow below and to the right.
void effectLst(pugi::xml_node parent) {
  pugi::xml_node shadow = parent.append_child("a:effectLst").append_child("a:outerShdw");
  shadow.append_attribute("dist") = 35921;
  shadow.append_attribute("dir") = 2700000;
  shadow.append_attribute("algn") = "br";
  appendValue(shadow, "a:srgbClr", "000000");
}

void fillOf(pugi::xml_node parent, const Fill& fill) {
  if (fill.pattern == number::none || fill.colorIndex == number::none) {
    parent.append_child("a:noFill");
  } else if (fill.colorIndex != number::automatic) {
    solidFill(parent, fill.colorIndex);
  }
}

}  // namespace

pugi::xml_node appendValue(pugi::xml_node parent, const char* name, const char* value) {
  pugi::xml_node node = parent.append_child(name);
  node.append_attribute("val") = value;
  return node;
}

pugi::xml_node appendValue(pugi::xml_node parent, const char* name, std::int32_t value) {
  return appendValue(parent, name, std::to_string(value).c_str());
}

pugi::xml_node appendFlag(pugi::xml_node parent, const char* name, bool value) {
  return appendValue(parent, name, value ? "1" : "0");
}

pugi::xml_node appendText(pugi::xml_node parent, const char* name, const std::string& text) {
  pugi::xml_node node = parent.append_child(name);
  node.text().set(printable(text).c_str());
  return node;
}

void solidFill(pugi::xml_node parent, std::int32_t colorIndex) {
  appendValue(parent.append_child("a:solidFill"), "a:srgbClr", hexColor(colorIndex).c_str());
}

void ln(pugi::xml_node parent, const Line& line, AutomaticColor automaticLine) {
  pugi::xml_node node = parent.append_child("a:ln");
  if (line.weight) node.append_attribute("w") = widthOf(*line.weight);
  if (line.style == number::none) {
    node.append_child("a:noFill");
    return;
  }
  if (line.colorIndex > 0) {
    solidFill(node, line.colorIndex);
  } else if (automaticLine) {
    solidFill(node, *automaticLine);
  }
  if (line.style != number::automatic) appendValue(node, "a:prstDash", dashOf(line.style));
}

void spPr(pugi::xml_node parent, const Fill& fill, const Line& line, bool shadow, AutomaticColor automaticLine) {
  if (fill.untouched() && line.untouched() && !shadow) return;
  pugi::xml_node node = parent.append_child("c:spPr");
  fillOf(node, fill);
  if (!line.untouched()) ln(node, line, automaticLine);
  if (shadow) effectLst(node);
}

void runProperties(pugi::xml_node parent, const char* name, const Font& font) {
  pugi::xml_node node = parent.append_child(name);
  constexpr double hundredths = 100.0;
  if (font.size > 0.0) node.append_attribute("sz") = roundToInt32(font.size * hundredths);
  if (font.bold) node.append_attribute("b") = *font.bold ? "1" : "0";
  if (font.italic) node.append_attribute("i") = *font.italic ? "1" : "0";
  node.append_attribute("u") = underlineOf(font.underline);
  node.append_attribute("strike") = font.strikethrough ? "sngStrike" : "noStrike";
  node.append_attribute("baseline") = font.superscript ? "30000" : font.subscript ? "-25000" : "0";
  if (font.colorIndex > 0) solidFill(node, font.colorIndex);
  if (!font.name.empty()) {
    node.append_child("a:latin").append_attribute("typeface") = printable(font.name).c_str();
    node.append_child("a:cs").append_attribute("typeface") = printable(font.name).c_str();
  }
}

void txPr(pugi::xml_node parent, const Font& font) {
  if (font.untouched()) return;
  pugi::xml_node node = parent.append_child("c:txPr");
  node.append_child("a:bodyPr");
  node.append_child("a:lstStyle");
  pugi::xml_node paragraph = node.append_child("a:p");
  runProperties(paragraph.append_child("a:pPr"), "a:defRPr", font);
  paragraph.append_child("a:endParaRPr").append_attribute("lang") = "en-US";
}

void layout(pugi::xml_node parent, const Frame& frame) {
  pugi::xml_node node = parent.append_child("c:layout");
  if (frame.automatic()) return;
  pugi::xml_node manual = node.append_child("c:manualLayout");
  if (frame.left) appendValue(manual, "c:xMode", "edge");
  if (frame.top) appendValue(manual, "c:yMode", "edge");
  const auto append = [&](const char* name, const std::optional<double>& fraction) {
    if (fraction) appendValue(manual, name, formatExact(*fraction).c_str());
  };
  append("c:x", frame.left);
  append("c:y", frame.top);
  append("c:w", frame.width);
  append("c:h", frame.height);
}

}  // namespace mervane::workbook::charts
