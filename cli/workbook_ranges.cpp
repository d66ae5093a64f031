#include "cli/workbook_ranges.h"

#include <algorithm>

#include "cli/text_display.h"

namespace mervane::cli {
namespace {

using workbook::CellArea;
using workbook::WorkbookHost;

constexpr std::int32_t lastReferenceColumn = 702;  // ZZ

std::optional<CellArea> usedArea(WorkbookHost& book, const std::string& sheet) {
  for (const WorkbookHost::SheetInfo& info : book.sheets()) {
    if (info.name == sheet) return info.used;
  }
  return std::nullopt;
}

bool holdsSomething(WorkbookHost& book, const WorkbookHost::Place& place, std::int32_t column) {
  for (std::int32_t row = place.area.firstRow; row <= place.area.lastRow; ++row) {
    const workbook::CellAddress at{row, column};
    if (!book.cellText(place.sheet, at).empty() || book.cellFormula(place.sheet, at)) return true;
  }
  return false;
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

std::string referenceOf(const WorkbookHost::Place& place) {
  return workbook::quotedSheetName(place.sheet) + "!" + workbook::a1(place.area);
}

std::optional<WorkbookHost::Place> proposedInputs(WorkbookHost& book) {
  const std::string sheet = book.activeSheetName();
  const auto block = book.numericBlock(sheet);
  if (!block) return std::nullopt;
  return WorkbookHost::Place{sheet, *block};
}

std::optional<WorkbookHost::Place> proposedOutputs(WorkbookHost& book, const WorkbookHost::Place& inputs) {
  const auto used = usedArea(book, inputs.sheet);
  // The column right of the inputs takes the labels of the statistics.
  const std::int32_t taken = std::max(inputs.area.lastColumn + 1, used ? used->lastColumn : 0);
  const std::int32_t column = taken + 1;
  if (column > lastReferenceColumn) return std::nullopt;
  return WorkbookHost::Place{inputs.sheet, {inputs.area.firstRow, column, inputs.area.firstRow, column}};
}

Neighbours neighboursOf(WorkbookHost& book, const WorkbookHost::Place& inputs, const std::optional<CellArea>& listing) {
  Neighbours neighbours;
  const auto used = usedArea(book, inputs.sheet);
  if (!used) return neighbours;
  for (std::int32_t column = used->firstColumn; column <= used->lastColumn; ++column) {
    const bool isInput = column >= inputs.area.firstColumn && column <= inputs.area.lastColumn;
    const bool isListing = listing && column >= listing->firstColumn && column <= listing->lastColumn;
    if (isInput || isListing || !holdsSomething(book, inputs, column)) continue;
    auto& side = column < inputs.area.firstColumn ? neighbours.left : neighbours.right;
    side.push_back(workbook::columnLetters(column));
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
  return warnings;
}

}  // namespace mervane::cli
