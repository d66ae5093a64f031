#pragma once

#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>

#include "hosts/workbook/charts/model.h"

/// Shape and text properties of chart parts, one function per element.
namespace mervane::workbook::charts {

/// Appends `<name val="value"/>`.
pugi::xml_node appendValue(pugi::xml_node parent, const char* name, const char* value);
pugi::xml_node appendValue(pugi::xml_node parent, const char* name, std::int32_t value);
pugi::xml_node appendFlag(pugi::xml_node parent, const char* name, bool value);
/// Appends an element that holds a text.
pugi::xml_node appendText(pugi::xml_node parent, const char* name, const std::string& text);

/// What a line or fill whose colour is automatic takes, by palette index; nothing leaves it to the application.
using AutomaticColor = std::optional<std::int32_t>;

/// `c:spPr` with fill, line and shadow; nothing where none of them was touched.
void spPr(pugi::xml_node parent, const Fill& fill, const Line& line, bool shadow,
          AutomaticColor automaticLine = std::nullopt);
/// `a:solidFill` of a palette colour.
void solidFill(pugi::xml_node parent, std::int32_t colorIndex);
/// `a:ln`
void ln(pugi::xml_node parent, const Line& line, AutomaticColor automaticLine = std::nullopt);
/// `c:txPr`; nothing where the font was not touched.
void txPr(pugi::xml_node parent, const Font& font);
/// `a:defRPr` or `a:rPr` with the font's settings.
void runProperties(pugi::xml_node parent, const char* name, const Font& font);
/// `c:layout` with a place in fractions of the chart; an empty one where the frame leaves all open.
void layout(pugi::xml_node parent, const Frame& frame);

}  // namespace mervane::workbook::charts
