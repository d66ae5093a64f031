#include "guard/refusal.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "guard/text_display.h"
#include "mervane/convert.h"
#include "mervane/failure.h"
#include "mervane/letter_case.h"
#include "mervane/published_errors.h"
#include "support/globals.h"

namespace mervane::guard {
namespace {

using sheet::CellAddress;
using sheet::CellArea;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// The digits of one or two letters and digits; nothing for another text.
std::optional<std::string_view> rowDigits(std::string_view cell) {
  std::size_t letters = 0;
  while (letters < cell.size() && isLetter(cell[letters])) ++letters;
  const std::string_view digits = cell.substr(letters);
  if (letters < 1 || letters > 2 || digits.empty() || !std::ranges::all_of(digits, isDigit)) return std::nullopt;
  return digits;
}

/// What is wrong with a row number; empty for nothing.
std::string rowTrouble(std::string_view digits) {
  std::string_view number = digits;
  while (number.size() > 1 && number.front() == '0') number.remove_prefix(1);
  if (number == "0") return "row 0 is below 1";
  constexpr std::size_t mostDigits = 5;
  if (number.size() < mostDigits || (number.size() == mostDigits && std::stol(std::string(number)) <= lastReferenceRow))
    return {};
  return "row " + std::string(number) + " is above 65535";
}

bool isText(BookCells& book, const std::string& sheet, CellAddress at) {
  return book.cellValueOrEmpty(sheet, at).getIf<std::string>() != nullptr;
}

/// Whole rows or columns as far as the sheet is used, without the lines of text on top.
CellArea usedPart(BookCells& book, const BookCells::Place& place) {
  const CellArea& area = place.area;
  const auto used = book.usedArea(place.sheet);
  const bool isWhole = area.rows() == sheet::lastSheetRow || area.columns() == sheet::lastSheetColumn;
  if (!isWhole || !used || !area.meets(*used)) return area;
  CellArea part{std::max(area.firstRow, used->firstRow), std::max(area.firstColumn, used->firstColumn),
                std::min(area.lastRow, used->lastRow), std::min(area.lastColumn, used->lastColumn)};
  const auto holdsText = [&](std::int32_t row) {
    for (std::int32_t column = part.firstColumn; column <= part.lastColumn; ++column) {
      if (isText(book, place.sheet, {row, column})) return true;
    }
    return false;
  };
  while (part.firstRow < part.lastRow && holdsText(part.firstRow)) ++part.firstRow;
  return part;
}

/// What to give in place of a text that leads to cells but is no reference; nothing where it leads nowhere.
std::string instead(BookCells& book, const std::string& text) {
  const auto place = book.find(text);
  if (!place) return {};
  const CellArea area = usedPart(book, *place);
  if (area.lastColumn > lastReferenceColumn) {
    return "; column " + sheet::columnLetters(area.lastColumn) + " is beyond ZZ";
  }
  if (area.lastRow > lastReferenceRow) return "; row " + std::to_string(area.lastRow) + " is above 65535";
  return "; give " + referenceOf({place->sheet, area});
}

/// Changes of one character that lead from one text to the other.
std::size_t distance(std::string_view from, std::string_view to) {
  std::vector<std::size_t> row(to.size() + 1);
  for (std::size_t j = 0; j <= to.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= from.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const std::size_t above = row[j];
      row[j] = std::min({above + 1, row[j - 1] + 1, diagonal + (from[i - 1] == to[j - 1] ? 0U : 1U)});
      diagonal = above;
    }
  }
  return row.back();
}

/// The nearest of the names, or all of them where none is near.
std::string nearestSheet(const BookCells& book, const std::string& wanted) {
  const std::vector<std::string> names = book.sheetNames();
  const auto far = [&](const std::string& name) { return distance(lowered(name), lowered(wanted)); };
  const auto nearest = std::ranges::min_element(names, {}, far);
  if (nearest == names.end()) return "; the workbook has no worksheet";
  if (names.size() == 1) return "; the only one is " + guard::quoted(*nearest);
  return "; the nearest name is " + guard::quoted(*nearest);
}

std::string unquotedSheet(std::string sheet) {
  if (sheet.size() < 2 || sheet.front() != '\'' || sheet.back() != '\'') return sheet;
  sheet = sheet.substr(1, sheet.size() - 2);
  for (std::size_t at = sheet.find("''"); at != std::string::npos; at = sheet.find("''", at + 1)) sheet.erase(at, 1);
  return sheet;
}

/// What keeps a cell from being a number; empty where it is one.
std::string cellTrouble(BookCells& book, const std::string& sheet, CellAddress at) {
  Variant value;
  try {
    value = book.cellValue(sheet, at);
  } catch (const Failure& failure) {
    return failure.description();
  }
  // Most cells are numbers, and what a cell shows takes longer to get than its value.
  const auto text = [&] { return guard::quoted(book.cellText(sheet, at)); };
  if (!isNumeric(value, globals::locale())) {
    if (value.getIf<Date>() != nullptr) return "date " + text() + " is not a number";
    if (value.getIf<ErrorValue>() != nullptr) return "error " + text() + " is not a number";
    return "text " + text() + " is not a number";
  }
  if (std::abs(toDouble(value, globals::locale())) > double{std::numeric_limits<float>::max()}) {
    return text() + " is beyond the range of 32-bit numbers";
  }
  return {};
}

/// The first cell that the component stumbles over, in the order in which it reads: column by column.
std::string firstBadCell(BookCells& book, const BookCells::Place& place) {
  const std::string sheet = sheet::quotedSheetName(place.sheet) + "!";
  std::string first;
  std::int64_t others = 0;
  // Beyond the used cells there is nothing, which counts as 0.
  const std::optional<CellArea> used = book.usedArea(place.sheet);
  if (!used) return first;
  const CellArea& area = place.area;
  for (std::int32_t column = area.firstColumn; column <= std::min(area.lastColumn, used->lastColumn); ++column) {
    for (std::int32_t row = area.firstRow; row <= std::min(area.lastRow, used->lastRow); ++row) {
      const std::string trouble = cellTrouble(book, place.sheet, {row, column});
      if (trouble.empty()) continue;
      if (first.empty()) {
        first = sheet + sheet::a1(CellAddress{row, column}) + ": " + trouble;
      } else {
        ++others;
      }
    }
  }
  if (others > 0) {
    first +=
        ", and neither " + std::string(others == 1 ? "is " : "are ") + counted(others, "cell", "cells") + " behind it";
  }
  return first;
}

/// Says what the first column of a range holds that is no reason to make clusters.
std::string equalValues(BookCells& book, const BookCells::Place& place) {
  const CellArea& area = place.area;
  if (area.rows() == 1) return "the range " + sheet::a1(area) + " has one row";
  const CellArea column{area.firstRow, area.firstColumn, area.lastRow, area.firstColumn};
  std::string held = book.cellText(place.sheet, {area.firstRow, area.firstColumn});
  return "first column " + sheet::a1(column) + " holds " + (held.empty() ? "nothing" : printable(held)) + " throughout";
}

}  // namespace

std::string referenceOf(const BookCells::Place& place) {
  return sheet::quotedSheetName(place.sheet) + "!" + sheet::a1(place.area);
}

std::string referenceTrouble(BookCells& book, std::string_view called, const std::string& reference) {
  const std::string name(called);
  if (reference.empty()) return name + " is empty; give a reference such as Sheet1!A2:D151";
  const std::size_t mark = reference.rfind('!');
  const bool hasSheet = mark != std::string::npos;
  const std::string_view cells = std::string_view(reference).substr(hasSheet ? mark + 1 : 0);
  const std::size_t colon = cells.find(':');
  const auto first = rowDigits(cells.substr(0, colon));
  const auto second = colon == std::string_view::npos ? first : rowDigits(cells.substr(colon + 1));
  if (!first || !second || mark == 0) {
    return name + ": " + guard::quoted(reference) + " is not a reference such as Sheet1!A2:D151" +
           instead(book, reference);
  }
  for (const std::string_view digits : {*first, *second}) {
    const std::string trouble = rowTrouble(digits);
    if (!trouble.empty()) return name + ": " + trouble;
  }
  if (!hasSheet) return {};
  const std::string sheet = unquotedSheet(reference.substr(0, mark));
  const std::vector<std::string> names = book.sheetNames();
  const bool isKnown =
      std::ranges::any_of(names, [&](const std::string& one) { return lowered(one) == lowered(sheet); });
  return isKnown ? std::string() : name + ": there is no sheet " + guard::quoted(sheet) + nearestSheet(book, sheet);
}

std::string whyRefused(BookCells& book, const ReferenceNames& names, const std::string& message,
                       const std::string& inputs, const std::string& outputs) {
  // In the order of the component's own checks.
  std::string trouble = referenceTrouble(book, names.inputs, inputs);
  if (!trouble.empty()) return trouble;
  const auto place = book.find(inputs);
  if (!place) return std::string(names.inputs) + ": " + guard::quoted(inputs) + " names no cells";
  trouble = firstBadCell(book, *place);
  if (!trouble.empty()) return trouble;
  trouble = referenceTrouble(book, names.outputs, outputs);
  if (!trouble.empty()) return trouble;
  return message == published::repeatedInputs.description ? equalValues(book, *place) : std::string();
}

}  // namespace mervane::guard
