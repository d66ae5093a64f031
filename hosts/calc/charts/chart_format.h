#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>
#include <cstdint>
#include <optional>

#include "hosts/calc/office_call.h"
#include "hosts/charts/model.h"

/// Lines, fills and fonts of the chart model as properties of the office's chart parts.
namespace mervane::calc {

using Properties = uno::Reference<css::beans::XPropertySet>;

/// The names of the properties that hold a line: along something, or around it.
enum class LineKind { line, border };

void setProperty(const Properties& part, const char* name, const uno::Any& value);

/// @param otherwise the colour of a line that leaves it open; nothing leaves it to the office
void setLine(const Properties& part, const mervane::charts::Line& line, std::optional<std::int32_t> otherwise = {},
             LineKind kind = LineKind::line);
/// @param color the name of the property that holds the colour
void setFill(const Properties& part, const mervane::charts::Fill& fill, const char* color = "FillColor");
void setFont(const Properties& part, const mervane::charts::Font& font);

/// 0xRRGGBB for an index of the palette; nothing where the index leaves the colour open.
[[nodiscard]] std::optional<std::int32_t> colorOf(std::int32_t colorIndex);

}  // namespace mervane::calc
