#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mervane::workbook {

/// The code of a built-in number format in English notation; "General" for a number that has none.
[[nodiscard]] std::string_view builtInFormat(std::int32_t number) noexcept;
/// The number of a built-in format, -1 where the code is none of them.
[[nodiscard]] std::int32_t builtInNumber(std::string_view code) noexcept;
/// Whether numbers under this format are dates or times, so that a cell's value is a Date.
[[nodiscard]] bool isDateFormat(std::int32_t number, std::string_view code) noexcept;

/// About how a number is shown under the format, for the width of a column. Formats with fixed decimals, groups,
/// percent, currencies, words and sections are followed; a date has the length of its code; any other format shows the
/// number as General does.
[[nodiscard]] std::string shownNumber(double value, std::string_view code);

/// A text at least as long as what is shown for the number, in digits, a point and a sign; empty where that cannot be
/// told without showing it.
[[nodiscard]] std::string_view longestShown(double value, std::string_view code) noexcept;

/// An ISO 8601 date, time or both as a serial number; a not-a-number where the text is none.
[[nodiscard]] double isoDateSerial(std::string_view text, bool from1904) noexcept;

}  // namespace mervane::workbook
