#include "cli/workbook_ranges.h"

#include <algorithm>

#include "cli/text_display.h"
#include "guard/proposed_numbers.h"

namespace mervane::cli {
namespace {

using hosts::OpenBook;
using sheet::CellArea;

bool holdsSomething(OpenBook& book, const OpenBook::Place& place, std::int32_t column) {
  for (std::int32_t row = place.area.firstRow; row <= place.area.lastRow; ++row) {
    const sheet::CellAddress at{row, column};
    if (!book.cellText(place.sheet, at).empty() || book.cellFormula(place.sheet, at)) return true;
  }
  return false;
}

/// "B5", "B5 and C7", "B5, C7 and 3 other cells".
std::string cellsText(const std::vector<std::string>& cells) {
  constexpr std::size_t most = 5;
  const std::size_t named = std::min(cells.size(), most);
  const std::size_t others = cells.size() - named;
  std::string text;
  for (std::size_t i = 0; i < named; ++i) {
    if (i > 0) text += i + 1 == named && others == 0 ? " and " : ", ";
    text += cells[i];
  }
  if (others == 0) return text;
  return text + " and " + counted(static_cast<std::int64_t>(others), "other cell", "other cells");
}

/// "column A", "columns A and C", "columns A, C and D".
std::string columnsText(const std::vector<std::string>& columns) {
  std::string text = columns.size() == 1 ? "column " : "columns ";
  constexpr std::size_t most = 12;
  if (columns.size() > most) return text + columns.front() + " to " + columns.back();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) text += i + 1 == columns.size() ? " and " : ", ";
    text += columns[i];
  }
  return text;
}

}  // namespace

std::optional<OpenBook::Place> proposedInputs(OpenBook& book) {
  const std::string sheet = book.activeSheetName();
  const auto block = guard::proposedNumbers(book, sheet);
  if (!block) return std::nullopt;
  return OpenBook::Place{sheet, *block};
}

Neighbours neighboursOf(OpenBook& book, const OpenBook::Place& inputs, const std::optional<CellArea>& listing) {
  Neighbours neighbours;
  const auto used = book.usedArea(inputs.sheet);
  if (!used) return neighbours;
  const CellArea moving{inputs.area.firstRow, 1, inputs.area.lastRow, inputs.area.lastColumn};
  for (const sheet::CellAddress& at : book.commentedCells(inputs.sheet, moving)) {
    neighbours.comments.push_back(sheet::a1(at));
  }
  for (std::int32_t column = used->firstColumn; column <= used->lastColumn; ++column) {
    const bool isInput = column >= inputs.area.firstColumn && column <= inputs.area.lastColumn;
    const bool isListing = listing && column >= listing->firstColumn && column <= listing->lastColumn;
    if (isInput || isListing || !holdsSomething(book, inputs, column)) continue;
    auto& side = column < inputs.area.firstColumn ? neighbours.left : neighbours.right;
    side.push_back(sheet::columnLetters(column));
  }
  return neighbours;
}

std::vector<std::string> sortingWarnings(const Neighbours& neighbours) {
  std::vector<std::string> warnings;
  if (!neighbours.left.empty()) {
    warnings.push_back("sorting by cluster moves the cells of " + columnsText(neighbours.left) +
                       ", left of the inputs, with their rows; --no-sort leaves every row where it is");
  }
  if (!neighbours.right.empty()) {
    warnings.push_back("sorting by cluster leaves the cells of " + columnsText(neighbours.right) +
                       ", right of the inputs, where they are, so that they no longer stand beside their rows; "
                       "--no-sort leaves every row where it is");
  }
  if (!neighbours.comments.empty()) {
    warnings.push_back("sorting by cluster leaves the comments of " + cellsText(neighbours.comments) +
                       " where they are, so that they no longer belong to their rows; --no-sort leaves every row "
                       "where it is");
  }
  return warnings;
}

}  // namespace mervane::cli
