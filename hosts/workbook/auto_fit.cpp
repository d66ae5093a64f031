#include "hosts/workbook/auto_fit.h"

#include <algorithm>

#include "hosts/workbook/font_metrics.h"
#include "hosts/workbook/number_format.h"
#include "hosts/workbook/sheet.h"

namespace mervane::workbook {

namespace {

constexpr std::size_t mostWrittenRows = 100'000;

double widthOf(const Sheet& sheet, std::uint32_t style, std::string_view text) {
  const Styles& styles = sheet.shared().styles;
  return textWidth(text, styles.fontName(style), styles.fontSize(style), styles.isBold(style));
}

double cellWidth(Sheet& sheet, CellAddress at) {
  const Cell* cell = sheet.cells().find(at);
  if (cell == nullptr || cell->kind == CellKind::empty) return 0.0;
  for (const CellArea& area : sheet.mergedAreas()) {
    if (area.contains(at)) return 0.0;
  }
  // OPTIMIZATION: nearly all cells of a long column are numbers, whose text needs no more than the cell itself.
  const Styles& styles = sheet.shared().styles;
  if (cell->kind == CellKind::number && !styles.isDate(cell->style)) {
    return widthOf(sheet, cell->style, shownNumber(cell->number, styles.numberFormat(cell->style)));
  }
  return widthOf(sheet, cell->style, sheet.shownText(at));
}

/// Tells of most numbers how wide they are at most, without printing them.
class WidthBound {
 public:
  explicit WidthBound(const Sheet& sheet) : sheet_(sheet) {}

  /// Whether the cell is surely no wider than that.
  [[nodiscard]] bool isWithin(const Cell& cell, double width) {
    if (cell.kind != CellKind::number) return false;
    const std::string_view longest = longestShown(cell.number, sheet_.shared().styles.numberFormat(cell.style));
    if (longest.empty()) return false;
    // There are two such texts, and neighbours mostly have one format.
    if (cell.style != style_ || longest != longest_) {
      style_ = cell.style;
      longest_ = longest;
      width_ = widthOf(sheet_, style_, longest_);
    }
    return width_ <= width;
  }

 private:
  const Sheet& sheet_;
  std::uint32_t style_ = 0;
  std::string_view longest_;
  double width_ = 0.0;
};

}  // namespace

void FitCache::willChange(Sheet& sheet, CellAddress at) {
  const auto found = entries_.find(at.column);
  if (found == entries_.end() || !found->second.isKnown) return;
  Entry& entry = found->second;
  if (entry.writtenRows.contains(at.row)) return;
  // The widest cell may be about to shrink, and then the next widest is not known.
  if (entry.writtenRows.size() >= mostWrittenRows || cellWidth(sheet, at) >= entry.widest) {
    entry = Entry{};
    return;
  }
  entry.writtenRows.insert(at.row);
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
  WidthBound bound(sheet);
  for (std::int32_t column = firstColumn; column <= lastColumn; ++column) {
    FitCache::Entry& entry = sheet.fitCache().entry(column);
    const auto measure = [&](std::int32_t row) {
      entry.widest = std::max(entry.widest, cellWidth(sheet, {row, column}));
    };
    if (entry.isKnown) {
      for (const std::int32_t row : entry.writtenRows) measure(row);
    } else {
      entry.isKnown = true;
      static_cast<void>(sheet.cells().forEachCell(
          {1, column, lastSheetRow, column}, [&](std::int32_t row, std::int32_t, const Cell& cell) {
            // OPTIMIZATION: most numbers of a long column need no text.
            if (cell.kind != CellKind::empty && !bound.isWithin(cell, entry.widest)) {
              measure(row);
            }
            return true;
          }));
    }
    entry.writtenRows.clear();
  }
  for (std::int32_t column = firstColumn; column <= lastColumn; ++column) {
    const double widest = sheet.fitCache().entry(column).widest;
    if (widest <= 0.0) continue;
    const Columns::Span* span = sheet.columns().find(column);
    if (span != nullptr && span->hidden) {
      sheet.shared().notes.push_back("the hidden column " + columnLetters(column) + " of the sheet \"" + sheet.name() +
                                     "\" is shown");
    }
    sheet.columns().setFittedWidth(column, SheetGeometry::charactersFor(widest, sheet.shared().digitPixels));
  }
  sheet.geometry().forget();
  sheet.markChanged();
}

}  // namespace mervane::workbook
