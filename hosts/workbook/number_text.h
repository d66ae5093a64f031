#pragma once

#include <cstddef>

namespace mervane::workbook {

/// Room that any of these texts fits in.
inline constexpr std::size_t longestNumberText = 32;

/// Prints the shortest text that reads back as the same number; one of up to four decimals without an exponent.
/// Not for infinite numbers and not-a-numbers.
/// @return the end of the text.
[[nodiscard]] char* printNumber(char* to, double value) noexcept;

/// The same for a number of up to four decimals and eleven digits before them; null for any other one.
///
/// OPTIMIZATION: most numbers that people keep are such, and they are printed as whole numbers with a point in them in
/// a small part of the time that finding the shortest text takes.
[[nodiscard]] char* printShortDecimal(char* to, double value) noexcept;

}  // namespace mervane::workbook
