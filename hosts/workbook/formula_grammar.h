#pragma once

#include <string_view>

namespace mervane::workbook {

/// Whether a text can be a formula. Only its form is looked at: functions and names that nobody knows pass, as does
/// what the spreadsheet alone can judge.
/// @param formula as a file holds it, without its equals sign and with commas between arguments.
[[nodiscard]] bool isFormulaText(std::string_view formula);

}  // namespace mervane::workbook
