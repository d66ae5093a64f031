#include "cli/cell_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>

namespace mervane::cli {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::size_t digitsAt(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin());
}

/// The pieces of a number; `mark` is 0 where there is none.
struct Pieces {
  bool isNumber = false;
  std::string_view whole;
  char mark = '\0';
  std::string_view fraction;
  std::string_view exponent;  ///< with its sign; empty where there is none
};

Pieces piecesOf(std::string_view text) {
  Pieces pieces;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
  pieces.whole = text.substr(0, digitsAt(text));
  text.remove_prefix(pieces.whole.size());
  if (!text.empty() && (text.front() == '.' || text.front() == ',')) {
    pieces.mark = text.front();
    text.remove_prefix(1);
    pieces.fraction = text.substr(0, digitsAt(text));
    text.remove_prefix(pieces.fraction.size());
  }
  if (pieces.whole.empty() && pieces.fraction.empty()) return pieces;
  if (!text.empty() && (text.front() == 'e' || text.front() == 'E')) {
    pieces.exponent = text.substr(1);
    text = pieces.exponent;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
    if (text.empty()) return pieces;
    text.remove_prefix(digitsAt(text));
  }
  pieces.isNumber = text.empty();
  return pieces;
}

bool looksGrouped(const Pieces& pieces) {
  return pieces.fraction.size() == 3 && !pieces.whole.empty() && pieces.whole.size() <= 3 &&
         pieces.whole.front() != '0' && pieces.exponent.empty();
}

/// The power of ten of the first digit that is not 0, the exponent counted in; a huge exponent is cut to a huge one.
std::int64_t magnitude(const Pieces& pieces) {
  constexpr std::int64_t huge = 1'000'000'000'000;
  std::int64_t exponent = 0;
  if (!pieces.exponent.empty()) {
    const bool isNegative = pieces.exponent.front() == '-';
    const std::string_view digits = pieces.exponent.substr(isDigit(pieces.exponent.front()) ? 0 : 1);
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (result.ec != std::errc() || exponent > huge) exponent = huge;
    if (isNegative) exponent = -exponent;
  }
  const std::size_t lead = pieces.whole.find_first_not_of('0');
  if (lead != std::string_view::npos) return exponent + static_cast<std::int64_t>(pieces.whole.size() - lead) - 1;
  const std::size_t zeros = std::min(pieces.fraction.find_first_not_of('0'), pieces.fraction.size());
  return exponent - static_cast<std::int64_t>(zeros) - 1;
}

}  // namespace

CellKind kindOfCell(std::string_view cell) noexcept {
  const std::string_view text = trimmed(cell);
  if (text.empty()) return CellKind::empty;
  const Pieces pieces = piecesOf(text);
  if (!pieces.isNumber) return CellKind::text;
  if (pieces.mark == '\0') return CellKind::integer;
  if (pieces.mark == '.') return CellKind::withPoint;
  return looksGrouped(pieces) ? CellKind::withGroupOrComma : CellKind::withComma;
}

bool isNumberKind(CellKind kind) noexcept {
  return kind != CellKind::empty && kind != CellKind::text;
}

bool isJsonNumber(std::string_view cell) noexcept {
  if (cell.empty() || cell.front() == '+') return false;
  const Pieces pieces = piecesOf(cell);
  if (!pieces.isNumber || pieces.whole.empty() || pieces.mark == ',') return false;
  if (pieces.mark == '.' && pieces.fraction.empty()) return false;
  return pieces.whole == "0" || pieces.whole.front() != '0';
}

CellNumber numberOfCell(std::string_view cell, DecimalMark mark) {
  std::string_view text = trimmed(cell);
  const Pieces pieces = piecesOf(text);
  if (!pieces.isNumber || (pieces.mark != '\0' && pieces.mark != static_cast<char>(mark))) return {};
  if (text.front() == '+') text.remove_prefix(1);

  std::string withPoint;
  if (pieces.mark == ',') {
    withPoint = text;
    *std::ranges::find(withPoint, ',') = '.';
    text = withPoint;
  }
  CellNumber number{CellNumber::Outcome::number, 0.0};
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number.value);
  if (result.ec == std::errc::result_out_of_range) {
    // The library gives one answer for both ends of the range.
    if (magnitude(pieces) > 0) return {CellNumber::Outcome::outOfRange, 0.0};
    number.value = text.front() == '-' ? -0.0 : 0.0;
  }
  return number;
}

}  // namespace mervane::cli
