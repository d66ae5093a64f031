#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace mervane::workbook::tests {

/// The children of an element, as words in their order: "name" at most once, "name*" any number, "name|name" any of
/// them once, "(name|name)*" any number of them in any order.
using Sequences = std::map<std::string, std::vector<std::string>, std::less<>>;

/// Sheets, styles, workbook and tables. Keys are "parent/element", or "element" where it is alike everywhere.
[[nodiscard]] const Sequences& spreadsheetSequences();
/// Charts and drawings.
[[nodiscard]] const Sequences& drawingSequences();

}  // namespace mervane::workbook::tests
