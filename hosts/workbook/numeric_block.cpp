#include "hosts/workbook/numeric_block.h"

#include <map>
#include <utility>
#include <vector>

#include "hosts/workbook/sheet.h"

namespace mervane::workbook {

namespace {

bool isNumber(Sheet& sheet, const Cell& cell) {
  CellKind kind = cell.kind;
  if (kind == CellKind::formula) kind = sheet.cells().formulas[cell.index].cachedKind;
  return kind == CellKind::number && !sheet.shared().styles.isDate(cell.style);
}

}  // namespace

std::optional<CellArea> numericBlock(Sheet& sheet) {
  using Run = std::pair<std::int32_t, std::int32_t>;
  std::map<Run, CellArea> open;  // by first and last column, those that reach the row before
  std::vector<CellArea> blocks;
  const auto closeBefore = [&](std::int32_t row) {
    std::erase_if(open, [&](const auto& one) {
      if (one.second.lastRow >= row - 1) return false;
      blocks.push_back(one.second);
      return true;
    });
  };
  sheet.cells().forEachRow([&](std::int32_t number, const Row& row) {
    closeBefore(number);
    for (std::size_t i = 0; i < row.cells.size();) {
      if (!isNumber(sheet, row.cells[i])) {
        ++i;
        continue;
      }
      const std::int32_t first = row.cells[i].column;
      std::int32_t last = first;
      for (++i; i < row.cells.size() && row.cells[i].column == last + 1 && isNumber(sheet, row.cells[i]); ++i) ++last;
      const auto [place, isNew] = open.try_emplace(Run{first, last}, CellArea{number, first, number, last});
      if (!isNew) place->second.lastRow = number;
    }
  });
  closeBefore(lastSheetRow + 2);
  std::optional<CellArea> best;
  bool isAlone = true;
  for (const CellArea& block : blocks) {
    if (block.rows() < 2) continue;
    if (!best || block.cells() > best->cells()) {
      best = block;
      isAlone = true;
    } else if (block.cells() == best->cells()) {
      isAlone = false;
    }
  }
  return isAlone ? best : std::nullopt;
}

}  // namespace mervane::workbook
