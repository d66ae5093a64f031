#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mervane::fuzz {

/// The parts of a package by name, in the order in which they are packed.
using Parts = std::vector<std::pair<std::string, std::string>>;

/// A small sound workbook with a sheet, shared texts, styles, a table, a drawing and a chart.
[[nodiscard]] const Parts& soundParts();

/// The bytes of a zip file of these parts, none of them compressed.
[[nodiscard]] std::string zipOf(const Parts& parts);

}  // namespace mervane::fuzz
