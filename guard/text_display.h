#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text of the user's as it may be shown: on one line, of bounded length, and without a byte that a terminal obeys.
namespace mervane::guard {

/// Control characters, line ends and bytes that are no UTF-8 become visible stand-ins.
[[nodiscard]] std::string printable(std::string_view text);
/// The text in double quotes, printable, cut with an ellipsis behind 40 characters.
[[nodiscard]] std::string quoted(std::string_view text);
/// A column's name as a message shows it: bare where it is a plain word, in quotes otherwise.
[[nodiscard]] std::string nameForMessage(std::string_view name);

/// How many cells of a terminal a text takes: 0 for combining marks, 2 for wide characters.
[[nodiscard]] std::size_t displayWidth(std::string_view text);
/// The printable text cut to at most that many cells, the last one an ellipsis where something was cut.
[[nodiscard]] std::string cutToWidth(std::string_view text, std::size_t width);

/// Whether every byte belongs to a well-formed UTF-8 sequence.
[[nodiscard]] bool isUtf8(std::string_view text) noexcept;

/// The digits alone, for line and column numbers: 12345.
[[nodiscard]] std::string decimal(long long number);
/// Groups of three with blanks between, for amounts: 12 345.
[[nodiscard]] std::string grouped(long long number);
/// "1 row", "2 rows".
[[nodiscard]] std::string counted(long long number, std::string_view singular, std::string_view plural);

}  // namespace mervane::guard
