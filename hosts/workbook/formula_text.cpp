#include "hosts/workbook/formula_text.h"

#include <charconv>
#include <utility>

#include "hosts/book/formula_references.h"
#include "hosts/workbook/case_fold.h"
#include "hosts/workbook/cell_address.h"
#include "hosts/workbook/cell_error.h"
#include "spreadsheet/name_characters.h"

namespace mervane::workbook {

namespace {

using Corner = sheet::MarkedCell;
using hosts::FormulaReference;
using Form = FormulaReference::Form;

std::string printed(const Corner& corner, Form form) {
  std::string text;
  if (form != Form::rows) text += (corner.fixedColumn ? "$" : "") + columnLetters(corner.column);
  if (form != Form::columns) text += (corner.fixedRow ? "$" : "") + std::to_string(corner.row);
  return text;
}

/// The cells of a reference where its relative rows and columns are moved.
std::string moved(const FormulaReference& reference, std::int32_t rows, std::int32_t columns) {
  Corner first = reference.first;
  Corner second = reference.second;
  for (Corner* corner : {&first, &second}) {
    if (!corner->fixedRow && reference.form != Form::columns) corner->row += rows;
    if (!corner->fixedColumn && reference.form != Form::rows) corner->column += columns;
    if (!isOnSheet(corner->row, corner->column)) return "#REF!";
  }
  // A corner that passes the other one takes its place, with its mark.
  if (first.row > second.row) {
    std::swap(first.row, second.row);
    std::swap(first.fixedRow, second.fixedRow);
  }
  if (first.column > second.column) {
    std::swap(first.column, second.column);
    std::swap(first.fixedColumn, second.fixedColumn);
  }
  return printed(first, reference.form) + (reference.isPair ? ":" + printed(second, reference.form) : "");
}

/// The formula with its references moved that the function says yes to; all between them stays as it is.
template <class Moves>
std::string withMovedReferences(std::string_view formula, std::int32_t rows, std::int32_t columns, Moves&& moves) {
  std::string result;
  result.reserve(formula.size() + 8);
  std::size_t copied = 0;
  for (const FormulaReference& reference : hosts::referencesIn(formula)) {
    if (!moves(reference)) continue;
    result += formula.substr(copied, reference.begin - copied);
    result += moved(reference, rows, columns);
    copied = reference.begin + reference.length;
  }
  return result.append(formula.substr(copied));
}

/// Whether the sheets of a reference, as a formula writes them, are the one sheet of this name.
bool isSheet(std::string_view written, std::string_view name) {
  const std::optional<ReferenceText> reference = parseReference(std::string(written) + "!A1");
  return reference && caseFolded(reference->sheet) == caseFolded(name);
}

}  // namespace

std::string movedFormula(std::string_view formula, std::int32_t rows, std::int32_t columns) {
  return withMovedReferences(formula, rows, columns, [](const FormulaReference&) { return true; });
}

std::string sortedFormula(std::string_view formula, std::int32_t rows, std::string_view sheet) {
  return withMovedReferences(formula, rows, 0, [&](const FormulaReference& reference) {
    return reference.sheet.empty() || isSheet(reference.sheet, sheet);
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
