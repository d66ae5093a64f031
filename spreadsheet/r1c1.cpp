#include "spreadsheet/r1c1.h"

#include <charconv>
#include <cstdint>

#include "spreadsheet/marked_cell.h"
#include "spreadsheet/name_characters.h"

namespace mervane::sheet {

namespace {

/// One index of an R1C1 reference: absolute, or a distance from the base.
struct Index {
  bool isThere = false;
  bool isRelative = false;
  std::int32_t value = 0;
};

/// Takes "R5", "R[-1]" or "R" off the begin, for the letter given in either case.
bool takeIndex(std::string_view& text, char letter, Index& index) {
  if (text.empty() || (text.front() != letter && text.front() != letter - 'A' + 'a')) return false;
  std::string_view rest = text.substr(1);
  const bool bracket = rest.starts_with('[');
  if (bracket) rest.remove_prefix(1);
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  const auto length = static_cast<std::size_t>(end - rest.data());
  if (error == std::errc::result_out_of_range || (value < 0 && !bracket)) return false;
  if (bracket && (length == 0 || length >= rest.size() || rest[length] != ']')) return false;
  rest.remove_prefix(length + (bracket ? 1 : 0));
  index = {true, bracket || length == 0, value};
  text = rest;
  return true;
}

/// One place of a reference in A1 form; empty where it is off the sheet.
std::string printed(const Index& index, std::int32_t base, std::int32_t last, bool isRow) {
  const std::int64_t place = index.isRelative ? std::int64_t{base} + index.value : index.value;
  if (place < 1 || place > last) return {};
  const auto number = static_cast<std::int32_t>(place);
  return (index.isRelative ? "" : "$") + (isRow ? std::to_string(number) : columnLetters(number));
}

bool endsName(std::string_view rest) {
  return rest.empty() ||
         (!isNamePart(rest.front()) && rest.front() != '(' && rest.front() != '!' && rest.front() != '[');
}

std::string distance(std::int32_t place, std::int32_t base, bool isFixed) {
  if (isFixed) return std::to_string(place);
  return place == base ? std::string() : "[" + std::to_string(place - base) + "]";
}

/// Takes one A1 cell with its markers.
bool takeCell(std::string_view& text, CellAddress base, std::string& as) {
  std::string_view rest = text;
  MarkedCell at;
  if (!takeMarkedCell(rest, at) || !endsName(rest)) return false;
  as = "R" + distance(at.row, base.row, at.fixedRow) + "C" + distance(at.column, base.column, at.fixedColumn);
  text = rest;
  return true;
}

enum class Taken { no, yes, offSheet };

Taken takeR1C1(std::string_view& text, CellAddress base, std::string& as) {
  std::string_view rest = text;
  Index row;
  Index column;
  takeIndex(rest, 'R', row);
  takeIndex(rest, 'C', column);
  if ((!row.isThere && !column.isThere) || !endsName(rest)) return Taken::no;
  const std::string rowText = row.isThere ? printed(row, base.row, lastSheetRow, true) : "";
  const std::string columnText = column.isThere ? printed(column, base.column, lastSheetColumn, false) : "";
  if ((row.isThere && rowText.empty()) || (column.isThere && columnText.empty())) return Taken::offSheet;
  text = rest;
  if (row.isThere && column.isThere) {
    as = columnText + rowText;
  } else {
    // A whole row or column is written as a pair in A1 form.
    as = row.isThere ? rowText + ":" + rowText : columnText + ":" + columnText;
  }
  return Taken::yes;
}

/// Copies the formula and hands every name that stands alone to the function.
template <class Take>
std::optional<std::string> converted(std::string_view formula, Take take) {
  std::string result;
  const auto copy = [&](std::size_t count) {
    result += formula.substr(0, count);
    formula.remove_prefix(count);
  };
  while (!formula.empty()) {
    const char c = formula.front();
    if (c == '"' || c == '\'') {
      const std::size_t close = formula.find(c, 1);
      copy(close == std::string_view::npos ? formula.size() : close + 1);
    } else if (c == '[') {
      const std::size_t close = formula.find(']');
      copy(close == std::string_view::npos ? formula.size() : close + 1);
    } else if (!isNamePart(c) && c != '$') {
      copy(1);
    } else {
      std::string as;
      const Taken taken = take(formula, as);
      if (taken == Taken::offSheet) return std::nullopt;
      if (taken == Taken::yes) {
        result += as;
        continue;
      }
      std::size_t length = 1;
      while (length < formula.size() && isNamePart(formula[length])) ++length;
      copy(length);
    }
  }
  return result;
}

}  // namespace

std::optional<std::string> toA1(std::string_view formula, CellAddress base) {
  return converted(formula, [&](std::string_view& text, std::string& as) { return takeR1C1(text, base, as); });
}

std::optional<std::string> toR1C1(std::string_view formula, CellAddress base) {
  return converted(formula, [&](std::string_view& text, std::string& as) {
    return takeCell(text, base, as) ? Taken::yes : Taken::no;
  });
}

}  // namespace mervane::sheet
