#pragma once

#include <string_view>

/// Numbers in data files. Their grammar is narrower than that of a spreadsheet's cells: a sign, digits, one decimal
/// mark, an exponent, blanks around; no grouping, no currency, no hexadecimal, no "nan" or "inf". What has any of
/// these is text, so that nothing is taken for a number that was not meant as one.
namespace mervane::cli {

enum class DecimalMark : char { point = '.', comma = ',' };

enum class CellKind {
  empty,             ///< nothing, or blanks alone
  integer,           ///< a number without a decimal mark
  withPoint,         ///< a number with a full stop as its decimal mark
  withComma,         ///< a number with a comma as its decimal mark
  withGroupOrComma,  ///< such as 1,234: a decimal comma or a group of three
  text,
};

[[nodiscard]] CellKind kindOfCell(std::string_view cell) noexcept;
[[nodiscard]] bool isNumberKind(CellKind kind) noexcept;

/// Whether the text, as it stands, is a number in the notation of JSON.
[[nodiscard]] bool isJsonNumber(std::string_view cell) noexcept;

struct CellNumber {
  enum class Outcome { number, notNumber, outOfRange };
  Outcome outcome = Outcome::notNumber;
  double value = 0.0;
};

/// The nearest double. A magnitude below the smallest one becomes 0; one above the largest is out of range.
[[nodiscard]] CellNumber numberOfCell(std::string_view cell, DecimalMark mark);

}  // namespace mervane::cli
