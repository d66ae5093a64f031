#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/cell_number.h"
#include "cli/error_answers.h"
#include "cli/output_formats.h"
#include "cli/report.h"

/// The texts of options as values. Each raises a Problem with the status usage for a text that it does not know,
/// naming the option, the text and what would do.
namespace mervane::cli {

/// One character, or "comma", "semicolon", "tab" ("\t" too), "bar", "space".
[[nodiscard]] char delimiterOption(const std::string& option, const std::string& text);
/// One character, or "none".
[[nodiscard]] std::optional<char> quoteOption(const std::string& text);
/// ".", "point", ",", "comma".
[[nodiscard]] DecimalMark decimalOption(const std::string& text);
/// "csv", "tsv", "json", "ndjson", "table".
[[nodiscard]] Format formatOption(const std::string& text);
/// "abort", "retry:N" with N from 1, "ignore".
[[nodiscard]] ErrorPolicy onErrorOption(const std::string& text);
/// Empty, "text", "json".
[[nodiscard]] ReportForm reportOption(const std::string& text);
/// 0 to 4, or "default", "zerot", "tanh", "exp05", "exp".
[[nodiscard]] std::int32_t activationOption(const std::string& text);
/// A whole number from least to 2147483647.
[[nodiscard]] std::int32_t wholeOption(const std::string& option, const std::string& text, std::int32_t least);
/// A finite number with a full stop as its decimal mark.
[[nodiscard]] double numberOption(const std::string& option, const std::string& text);
/// A number from 0, 0 included, to 1, 1 excluded.
[[nodiscard]] double fractionOption(const std::string& option, const std::string& text);

}  // namespace mervane::cli
