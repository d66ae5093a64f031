#include "hosts/workbook/formula_text.h"

#include <charconv>
#include <functional>

#include "hosts/workbook/cell_address.h"
#include "hosts/workbook/cell_error.h"
#include "spreadsheet/marked_cell.h"
#include "spreadsheet/name_characters.h"

namespace mervane::workbook {

namespace {

using Corner = sheet::MarkedCell;

std::string printed(const Corner& corner) {
  if (!isOnSheet(corner.row, corner.column)) return "#REF!";
  return (corner.fixedColumn ? "$" : "") + columnLetters(corner.column) + (corner.fixedRow ? "$" : "") +
         std::to_string(corner.row);
}

/// A cell or two with a colon; `second` is unused for one cell.
struct Reference {
  Corner first;
  Corner second;
  bool isPair = false;
  bool hasSheet = false;
};

/// Copies the formula, handing each reference to the function; texts, sheet names, names and functions stay.
std::string withReferences(std::string_view formula, const std::function<std::string(const Reference&)>& change) {
  std::string result;
  result.reserve(formula.size() + 8);
  const auto copy = [&](std::size_t count) {
    result += formula.substr(0, count);
    formula.remove_prefix(count);
  };
  while (!formula.empty()) {
    const char c = formula.front();
    if (c == '"' || c == '\'') {
      const std::size_t close = formula.find(c, 1);
      copy(close == std::string_view::npos ? formula.size() : close + 1);
      continue;
    }
    if (c == '[') {
      // A column of a table or another workbook; brackets nest there.
      std::size_t depth = 0;
      std::size_t at = 0;
      do {
        if (formula[at] == '[') ++depth;
        if (formula[at] == ']') --depth;
        ++at;
      } while (at < formula.size() && depth > 0);
      copy(at);
      continue;
    }
    if (!sheet::isNamePart(c) && c != '$') {
      copy(1);
      continue;
    }
    const bool hasSheet = result.ends_with('!');
    Reference reference;
    reference.hasSheet = hasSheet;
    std::string_view rest = formula;
    const auto standsAlone = [](std::string_view behind) {
      return behind.empty() || (!sheet::isNamePart(behind.front()) && behind.front() != '(' && behind.front() != '!' &&
                                behind.front() != '[' && behind.front() != '$');
    };
    if (sheet::takeMarkedCell(rest, reference.first) && standsAlone(rest)) {
      std::string_view pair = rest;
      if (pair.starts_with(':')) {
        pair.remove_prefix(1);
        if (sheet::takeMarkedCell(pair, reference.second) && standsAlone(pair)) {
          reference.isPair = true;
          rest = pair;
        }
      }
      result += change(reference);
      formula = rest;
      continue;
    }
    std::size_t length = 1;
    while (length < formula.size() && (sheet::isNamePart(formula[length]) || formula[length] == '$')) ++length;
    copy(length);
  }
  return result;
}

}  // namespace

std::string movedFormula(std::string_view formula, std::int32_t rows, std::int32_t columns) {
  const auto moved = [&](Corner corner) {
    if (!corner.fixedRow) corner.row += rows;
    if (!corner.fixedColumn) corner.column += columns;
    return printed(corner);
  };
  return withReferences(formula, [&](const Reference& reference) {
    return moved(reference.first) + (reference.isPair ? ":" + moved(reference.second) : "");
  });
}

std::string rowMovedFormula(std::string_view formula, std::int32_t fromRow, std::int32_t toRow) {
  const auto goes = [&](const Corner& corner) { return !corner.fixedRow && corner.row == fromRow; };
  return withReferences(formula, [&](const Reference& reference) {
    Reference moved = reference;
    if (!reference.hasSheet && goes(reference.first) && (!reference.isPair || goes(reference.second))) {
      moved.first.row = toRow;
      moved.second.row = toRow;
    }
    return printed(moved.first) + (moved.isPair ? ":" + printed(moved.second) : "");
  });
}

std::optional<Variant> constantFormula(std::string_view formula) {
  while (formula.starts_with(' ')) formula.remove_prefix(1);
  while (formula.ends_with(' ')) formula.remove_suffix(1);
  std::string upper(formula);
  for (char& c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  if (upper == "NA()") return Variant(ErrorValue{2042});
  if (upper == "TRUE" || upper == "TRUE()") return Variant(true);
  if (upper == "FALSE" || upper == "FALSE()") return Variant(false);
  if (const std::optional<std::int32_t> code = errorCode(upper)) return Variant(ErrorValue{*code});
  if (formula.size() >= 2 && formula.front() == '"' && formula.back() == '"') {
    std::string text;
    for (std::size_t i = 1; i + 1 < formula.size(); ++i) {
      if (formula[i] == '"') {
        ++i;
        if (i + 1 >= formula.size() || formula[i] != '"') return std::nullopt;
      }
      text += formula[i];
    }
    return Variant(std::move(text));
  }
  double number = 0.0;
  const auto [end, error] = std::from_chars(formula.data(), formula.data() + formula.size(), number);
  if (error == std::errc{} && end == formula.data() + formula.size() && !formula.empty() &&
      !sheet::isLetter(formula.back())) {
    return Variant(number);
  }
  return std::nullopt;
}

}  // namespace mervane::workbook
