#include "hosts/workbook/cell_store.h"

#include <algorithm>
#include <utility>

namespace mervane::workbook {

CellStore::CellStore() : pages_(static_cast<std::size_t>(lastSheetRow) / pageRows) {
  rowFormats_.emplace_back();
}

const Cell* CellStore::findIn(const Row& row, std::int32_t column) noexcept {
  if (row.cells.empty()) return nullptr;
  const Cell* cells = row.cells.data();
  const std::int32_t guess = column - cells[0].column;
  if (guess < 0) return nullptr;
  if (static_cast<std::size_t>(guess) < row.cells.size() && cells[guess].column == column) return cells + guess;
  const Cell* end = cells + row.cells.size();
  const Cell* found =
      std::lower_bound(cells, end, column, [](const Cell& cell, std::int32_t wanted) { return cell.column < wanted; });
  return found != end && found->column == column ? found : nullptr;
}

Row& CellStore::makeRow(std::int32_t number) {
  std::unique_ptr<Page>& page = pages_[static_cast<std::size_t>(number - 1) / pageRows];
  if (page == nullptr) page = std::make_unique<Page>();
  Row& row = (*page)[static_cast<std::size_t>(number - 1) % pageRows];
  row.exists = true;
  return row;
}

Cell& CellStore::make(CellAddress at) {
  Row& row = makeRow(at.row);
  if (const Cell* found = findIn(row, at.column)) return *const_cast<Cell*>(found);
  const auto place = std::lower_bound(row.cells.begin(), row.cells.end(), at.column,
                                      [](const Cell& cell, std::int32_t wanted) { return cell.column < wanted; });
  Cell cell;
  cell.column = static_cast<std::uint16_t>(at.column);
  return *row.cells.insert(place, cell);
}

std::optional<CellArea> CellStore::usedArea(bool withFormats) const {
  std::optional<CellArea> area;
  forEachRow([&](std::int32_t number, const Row& row) {
    const auto counts = [&](const Cell& cell) { return withFormats || cell.kind != CellKind::empty; };
    const auto first = std::find_if(row.cells.begin(), row.cells.end(), counts);
    if (first == row.cells.end()) return;
    const auto last = std::find_if(row.cells.rbegin(), row.cells.rend(), counts);
    if (!area) area = CellArea{number, first->column, number, last->column};
    area->lastRow = number;
    area->firstColumn = std::min<std::int32_t>(area->firstColumn, first->column);
    area->lastColumn = std::max<std::int32_t>(area->lastColumn, last->column);
  });
  return area;
}

std::int32_t CellStore::nextRow(std::int32_t row) const noexcept {
  for (; row <= lastSheetRow; ++row) {
    const auto page = static_cast<std::size_t>(row - 1) / pageRows;
    if (pages_[page] == nullptr) {
      row = static_cast<std::int32_t>((page + 1) * pageRows);
    } else if ((*pages_[page])[static_cast<std::size_t>(row - 1) % pageRows].exists) {
      return row;
    }
  }
  return lastSheetRow + 1;
}

std::uint32_t CellStore::addRowFormat(RowFormat format) {
  if (format.attributes.empty()) return 0;
  const auto found = rowFormatNumbers_.find(format.attributes);
  if (found != rowFormatNumbers_.end()) return found->second;
  const auto number = static_cast<std::uint32_t>(rowFormats_.size());
  rowFormatNumbers_.emplace(format.attributes, number);
  rowFormats_.push_back(std::move(format));
  return number;
}

}  // namespace mervane::workbook
