#include "hosts/workbook/numeric_block.h"

#include <span>

#include "hosts/book/numeric_blocks.h"
#include "hosts/workbook/sheet.h"

namespace mervane::workbook {

namespace {

bool isNumber(Sheet& sheet, const Cell& cell) {
  CellKind kind = cell.kind;
  if (kind == CellKind::formula) kind = sheet.cells().formulaOf(cell).cachedKind;
  return kind == CellKind::number && !sheet.shared().styles.isDate(cell.style);
}

}  // namespace

std::optional<CellArea> numericBlock(Sheet& sheet) {
  hosts::NumericBlocks blocks;
  using Cells = std::span<const CellStore::PlacedCell>;
  sheet.cells().forEachRowWithCells([&](std::int32_t number, const Row&, Cells cells) {
    for (std::size_t i = 0; i < cells.size();) {
      if (!isNumber(sheet, *cells[i].cell)) {
        ++i;
        continue;
      }
      const std::int32_t first = cells[i].column;
      std::int32_t last = first;
      for (++i; i < cells.size() && cells[i].column == last + 1 && isNumber(sheet, *cells[i].cell); ++i) ++last;
      blocks.addRun(number, first, last);
    }
  });
  return blocks.largest();
}

}  // namespace mervane::workbook
