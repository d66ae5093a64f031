#include "hosts/workbook/auto_fit.h"

#include <algorithm>
#include <vector>

#include "hosts/workbook/font_metrics.h"
#include "hosts/workbook/sheet.h"

namespace mervane::workbook {

namespace {

constexpr std::size_t mostWrittenRows = 100'000;

double cellWidth(Sheet& sheet, CellAddress at) {
  const Cell* cell = sheet.cells().find(at);
  if (cell == nullptr || cell->kind == CellKind::empty) return 0.0;
  for (const CellArea& area : sheet.mergedAreas()) {
    if (area.contains(at)) return 0.0;
  }
  const std::uint32_t style = cell->style;
  const Styles& styles = sheet.shared().styles;
  return textWidth(sheet.shownText(at), styles.fontName(style), styles.fontSize(style), styles.isBold(style));
}

}  // namespace

void FitCache::willChange(Sheet& sheet, CellAddress at) {
  const auto found = entries_.find(at.column);
  if (found == entries_.end() || !found->second.isKnown) return;
  Entry& entry = found->second;
  // The widest cell may be about to shrink, and then the next widest is not known.
  if (entry.writtenRows.size() >= mostWrittenRows || cellWidth(sheet, at) >= entry.widest) {
    entry = Entry{};
    return;
  }
  entry.writtenRows.push_back(at.row);
}

void FitCache::willChange(Sheet& sheet, const CellArea& area) {
  if (entries_.empty()) return;
  if (area.cells() > static_cast<std::int64_t>(mostWrittenRows)) {
    forget();
    return;
  }
  for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
    for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column)
      willChange(sheet, CellAddress{row, column});
  }
}

void autoFit(Sheet& sheet, std::int32_t firstColumn, std::int32_t lastColumn) {
  sheet.requirePermission("formatColumns", "changes of column widths");
  const CellStore& cells = sheet.cells();
  std::vector<FitCache::Entry*> unknown(static_cast<std::size_t>(lastColumn - firstColumn) + 1, nullptr);
  bool isUnknown = false;
  for (std::int32_t column = firstColumn; column <= lastColumn; ++column) {
    FitCache::Entry& entry = sheet.fitCache().entry(column);
    if (entry.isKnown) {
      for (const std::int32_t row : entry.writtenRows) {
        entry.widest = std::max(entry.widest, cellWidth(sheet, {row, column}));
      }
    } else {
      unknown[static_cast<std::size_t>(column - firstColumn)] = &entry;
      isUnknown = true;
      entry = {0.0, true, {}};
    }
    entry.writtenRows.clear();
  }
  // OPTIMIZATION: all columns are measured in one pass, since the cells of a row lie side by side.
  if (isUnknown) {
    cells.forEachRow([&](std::int32_t row, const Row& one) {
      for (const Cell& cell : one.cells) {
        if (cell.column < firstColumn || cell.column > lastColumn || cell.kind == CellKind::empty) continue;
        FitCache::Entry* entry = unknown[static_cast<std::size_t>(cell.column - firstColumn)];
        if (entry != nullptr) entry->widest = std::max(entry->widest, cellWidth(sheet, {row, cell.column}));
      }
    });
  }
  for (std::int32_t column = firstColumn; column <= lastColumn; ++column) {
    const double widest = sheet.fitCache().entry(column).widest;
    if (widest <= 0.0) continue;
    sheet.columns().setFittedWidth(column, SheetGeometry::charactersFor(widest, sheet.shared().digitPixels));
  }
  sheet.geometry().forget();
  sheet.markChanged();
}

}  // namespace mervane::workbook
