#include "spreadsheet/marked_cell.h"

#include <cstddef>
#include <optional>
#include <string>

#include "spreadsheet/cell_address.h"
#include "spreadsheet/name_characters.h"

namespace mervane::sheet {

namespace {

bool takeMark(std::string_view& text) {
  const bool has = text.starts_with('$');
  if (has) text.remove_prefix(1);
  return has;
}

/// Takes the characters of one kind off the begin.
std::string_view takeAll(std::string_view& text, bool (*isOne)(char)) {
  std::size_t length = 0;
  while (length < text.size() && isOne(text[length])) ++length;
  const std::string_view taken = text.substr(0, length);
  text.remove_prefix(length);
  return taken;
}

}  // namespace

bool takeMarkedCell(std::string_view& text, MarkedCell& cell) {
  std::string_view rest = text;
  const bool fixedColumn = takeMark(rest);
  const std::string_view letters = takeAll(rest, &isLetter);
  const bool fixedRow = takeMark(rest);
  const std::string_view digits = takeAll(rest, &isDigit);
  const std::optional<CellAddress> at = parseCell(std::string(letters).append(digits));
  if (!at) return false;
  cell = {fixedColumn, fixedRow, at->column, at->row};
  text = rest;
  return true;
}

}  // namespace mervane::sheet
