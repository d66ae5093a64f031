#include "hosts/workbook/cell_store.h"

#include <algorithm>
#include <utility>

namespace mervane::workbook {

CellStore::CellStore() : bands_(static_cast<std::size_t>(lastSheetRow) / bandRows) {
  rowFormats_.emplace_back();
}

std::vector<CellStore::Strip>::const_iterator CellStore::lowerStrip(const std::vector<Strip>& strips,
                                                                    std::int32_t column) noexcept {
  return std::lower_bound(strips.begin(), strips.end(), column,
                          [](const Strip& strip, std::int32_t wanted) { return strip.column < wanted; });
}

std::vector<Cell>::const_iterator CellStore::lowerCell(const std::vector<Cell>& cells,
                                                       std::int32_t rowInBand) noexcept {
  return std::lower_bound(cells.begin(), cells.end(), rowInBand,
                          [](const Cell& cell, std::int32_t wanted) { return cell.rowInBand < wanted; });
}

const CellStore::Strip* CellStore::searchedStrip(const std::vector<Strip>& strips, std::int32_t column) noexcept {
  const auto found = lowerStrip(strips, column);
  return found != strips.end() && found->column == column ? &*found : nullptr;
}

const Cell* CellStore::searchedCell(const std::vector<Cell>& cells, std::size_t rowInBand) noexcept {
  const auto found = lowerCell(cells, static_cast<std::int32_t>(rowInBand));
  return found != cells.end() && found->rowInBand == rowInBand ? &*found : nullptr;
}

CellStore::Band& CellStore::makeBand(std::int32_t row) {
  std::unique_ptr<Band>& band = bands_[bandOf(row)];
  if (band == nullptr) band = std::make_unique<Band>();
  return *band;
}

CellStore::Strip& CellStore::makeStrip(Band& band, std::int32_t column) {
  if (const Strip* found = stripIn(band, column)) return const_cast<Strip&>(*found);
  return *band.strips.insert(lowerStrip(band.strips, column), Strip{column, {}});
}

/// Makes the strips of all these columns, which ascend, in one go: made one by one, each would move those behind it.
void CellStore::makeStrips(Band& band, std::span<const ColumnCell> columns) {
  std::vector<Strip> merged;
  merged.reserve(band.strips.size() + columns.size());
  auto old = band.strips.begin();
  for (const ColumnCell& one : columns) {
    while (old != band.strips.end() && old->column < one.column) merged.push_back(std::move(*old++));
    if (old == band.strips.end() || old->column != one.column) merged.push_back(Strip{one.column, {}});
  }
  merged.insert(merged.end(), std::move_iterator(old), std::move_iterator(band.strips.end()));
  band.strips = std::move(merged);
}

Row& CellStore::makeRow(std::int32_t number) {
  Row& row = makeBand(number).rows[rowInBand(number)];
  row.exists = true;
  return row;
}

Cell& CellStore::make(CellAddress at) {
  static_cast<void>(makeRow(at.row));
  const std::size_t place = rowInBand(at.row);
  Strip& strip = makeStrip(makeBand(at.row), at.column);
  if (const Cell* found = cellIn(strip, place)) return const_cast<Cell&>(*found);
  Cell cell;
  cell.rowInBand = static_cast<std::uint16_t>(place);
  return *strip.cells.insert(lowerCell(strip.cells, cell.rowInBand), cell);
}

void CellStore::fillRow(std::int32_t number, std::span<const ColumnCell> cells) {
  static_cast<void>(makeRow(number));
  Band& band = makeBand(number);
  const bool hasAllStrips = std::all_of(cells.begin(), cells.end(),
                                        [&](const ColumnCell& one) { return stripIn(band, one.column) != nullptr; });
  if (!hasAllStrips) makeStrips(band, cells);
  const std::size_t place = rowInBand(number);
  for (const ColumnCell& one : cells) {
    std::vector<Cell>& strip = const_cast<Strip*>(stripIn(band, one.column))->cells;
    Cell cell = one.cell;
    cell.rowInBand = static_cast<std::uint16_t>(place);
    strip.insert(strip.empty() || strip.back().rowInBand < place ? strip.end() : lowerCell(strip, cell.rowInBand),
                 cell);
  }
}

std::vector<RowCell> CellStore::takeColumn(std::int32_t column, std::int32_t firstRow, std::int32_t lastRow) {
  std::vector<RowCell> taken;
  for (std::size_t i = bandOf(firstRow); i <= bandOf(lastRow); ++i) {
    const Strip* found = bands_[i] == nullptr ? nullptr : stripIn(*bands_[i], column);
    if (found == nullptr) continue;
    std::vector<Cell>& cells = const_cast<Strip*>(found)->cells;
    const std::int32_t top = firstRowOf(i);
    const auto first = lowerCell(cells, firstRow - top);
    const auto last = lowerCell(cells, lastRow + 1 - top);
    for (auto cell = first; cell != last; ++cell) taken.push_back({top + cell->rowInBand, *cell});
    cells.erase(first, last);
  }
  return taken;
}

void CellStore::putColumn(std::int32_t column, std::span<const RowCell> cells) {
  std::vector<Cell> strip;
  for (std::size_t i = 0; i < cells.size();) {
    const std::size_t band = bandOf(cells[i].row);
    strip.clear();
    for (; i < cells.size() && bandOf(cells[i].row) == band; ++i) {
      static_cast<void>(makeRow(cells[i].row));
      strip.push_back(cells[i].cell);
      strip.back().rowInBand = static_cast<std::uint16_t>(rowInBand(cells[i].row));
    }
    // Cells that stay may stand above, below and between the new ones.
    std::vector<Cell>& into = makeStrip(*bands_[band], column).cells;
    const auto middle = static_cast<std::ptrdiff_t>(into.size());
    into.insert(into.end(), strip.begin(), strip.end());
    std::inplace_merge(into.begin(), into.begin() + middle, into.end(),
                       [](const Cell& a, const Cell& b) { return a.rowInBand < b.rowInBand; });
  }
}

std::vector<std::int32_t> CellStore::columnsIn(const CellArea& area) const {
  std::vector<bool> isUsed(static_cast<std::size_t>(lastSheetColumn) + 1, false);
  for (std::size_t i = bandOf(area.firstRow); i <= bandOf(area.lastRow); ++i) {
    if (bands_[i] == nullptr) continue;
    const std::vector<Strip>& strips = bands_[i]->strips;
    for (auto strip = lowerStrip(strips, area.firstColumn); strip != strips.end() && strip->column <= area.lastColumn;
         ++strip) {
      isUsed[static_cast<std::size_t>(strip->column)] = true;
    }
  }
  std::vector<std::int32_t> columns;
  for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
    if (isUsed[static_cast<std::size_t>(column)]) columns.push_back(column);
  }
  return columns;
}

void CellStore::Crosscut::take(const Band& band) {
  // Cells are dealt out by counting: first how many each row has, then each to the next free place of its row.
  starts_.fill(0);
  for (const Strip& strip : band.strips) {
    for (const Cell& cell : strip.cells) ++starts_[std::size_t{cell.rowInBand} + 1];
  }
  for (std::size_t i = 0; i < bandRows; ++i) starts_[i + 1] += starts_[i];
  cells_.resize(starts_.back());
  std::array<std::size_t, bandRows + 1> next = starts_;
  for (const Strip& strip : band.strips) {
    for (const Cell& cell : strip.cells) cells_[next[cell.rowInBand]++] = {strip.column, &cell};
  }
}

std::size_t CellStore::cellCount() const {
  std::size_t count = 0;
  forEachBand([&](std::int32_t, const Band& band) {
    for (const Strip& strip : band.strips) count += strip.cells.size();
  });
  return count;
}

std::optional<CellArea> CellStore::usedArea(bool withFormats) const {
  std::optional<CellArea> area;
  const auto counts = [&](const Cell& cell) { return withFormats || cell.kind != CellKind::empty; };
  forEachBand([&](std::int32_t firstRow, const Band& band) {
    for (const Strip& strip : band.strips) {
      const auto first = std::find_if(strip.cells.begin(), strip.cells.end(), counts);
      if (first == strip.cells.end()) continue;
      const auto last = std::find_if(strip.cells.rbegin(), strip.cells.rend(), counts);
      const CellArea one{firstRow + first->rowInBand, strip.column, firstRow + last->rowInBand, strip.column};
      if (!area) area = one;
      area->firstRow = std::min(area->firstRow, one.firstRow);
      area->lastRow = std::max(area->lastRow, one.lastRow);
      area->firstColumn = std::min(area->firstColumn, one.firstColumn);
      area->lastColumn = std::max(area->lastColumn, one.lastColumn);
    }
  });
  return area;
}

std::int32_t CellStore::nextRow(std::int32_t row) const noexcept {
  for (; row <= lastSheetRow; ++row) {
    const Band* band = bandAt(row);
    if (band == nullptr) {
      row = firstRowOf(bandOf(row) + 1) - 1;
    } else if (band->rows[rowInBand(row)].exists) {
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
