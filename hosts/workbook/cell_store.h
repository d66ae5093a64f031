#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

enum class CellKind : std::uint8_t {
  empty,  ///< a format without a value
  number,
  boolean,
  error,    ///< payload: the code of an ErrorValue
  text,     ///< payload: a number of the text table
  isoDate,  ///< payload: the text as written, a number of the text table
  formula,  ///< payload: a position among the formulas of the sheet
};

/// One cell in sixteen bytes.
struct Cell {
  union {
    double number = 0.0;
    std::uint64_t index;
  };
  std::uint32_t style = 0;
  std::uint16_t rowInBand = 0;  ///< from 0; kept by the CellStore alone
  CellKind kind = CellKind::empty;
  bool hasExtras : 1 = false;  ///< attributes or elements that we only keep; see CellStore::extras
  /// A number that was written as one since the cell got its format, so that it is no date, whatever its format says.
  bool isPlainNumber : 1 = false;
};
static_assert(sizeof(Cell) == 16);

/// A formula with the value it had when it was last computed.
struct Formula {
  std::string text;                       ///< without the equals sign; empty for a later member of a shared formula
  std::string attributes;                 ///< raw, with a blank in front: kind, area, group
  CellKind cachedKind = CellKind::empty;  ///< never formula; empty where no value was kept
  bool cachedTextIsEmpty = false;         ///< the value kept is the empty text
  union {
    double number = 0.0;
    std::uint64_t index;
  };
  /// The group that a shared formula belongs to, -1 for none.
  std::int32_t sharedGroup = -1;
  /// The cells of an array formula or data table.
  std::optional<CellArea> area;
  /// A table that the spreadsheet computes by putting values into other cells.
  [[nodiscard]] bool isDataTable() const noexcept { return attributes.find(" t=\"dataTable\"") != std::string::npos; }
};

/// What one cell says beside its value and format.
struct CellExtras {
  std::string attributes;  ///< raw, each with a blank in front
  std::string elements;    ///< raw
};

/// What the attributes of a row say; rows that say the same share one.
struct RowFormat {
  std::string attributes;  ///< raw, each with a blank in front, without the row's number and its spans
  double height = -1.0;    ///< points; negative where the row has the sheet's default
  std::uint32_t style = 0;
  bool hasStyle = false;
  bool hidden = false;
};

struct Row {
  std::uint32_t format = 0;
  bool exists = false;  ///< the file has an element for it, or a cell was made in it
};

/// A cell with the number that says where in its row or column it stands.
struct ColumnCell {
  std::int32_t column = 1;
  Cell cell;
};
struct RowCell {
  std::int32_t row = 1;
  Cell cell;
};

/// The cells of one sheet. Memory is proportional to the cells that exist; a cell of an area without gaps is found at
/// once, any other one by bisection.
///
/// OPTIMIZATION: the object model is asked for whole columns from top to bottom, so cells of one column lie side by
/// side: the rows are cut into bands, and each band holds a strip of cells for each of its columns. Where cells lay
/// row by row, a third of a clustering of a million cells was spent waiting for memory.
class CellStore {
 public:
  CellStore();

  [[nodiscard]] const Cell* find(CellAddress at) const noexcept {
    const Band* band = bandAt(at.row);
    if (band == nullptr) return nullptr;
    const Strip* strip = stripIn(*band, at.column);
    return strip == nullptr ? nullptr : cellIn(*strip, rowInBand(at.row));
  }
  [[nodiscard]] Cell* find(CellAddress at) noexcept {
    return const_cast<Cell*>(static_cast<const CellStore*>(this)->find(at));
  }
  /// The cell, made where it is missing; then it is empty and has the format 0. Cells that were found before in its
  /// column may have moved.
  [[nodiscard]] Cell& make(CellAddress at);

  /// Null where no row near it was ever mentioned.
  [[nodiscard]] const Row* rowAt(std::int32_t row) const noexcept {
    const Band* band = bandAt(row);
    return band == nullptr ? nullptr : &band->rows[rowInBand(row)];
  }
  [[nodiscard]] Row& makeRow(std::int32_t row);
  /// Gives a row that has no cells yet these ones, which stand by ascending column.
  void fillRow(std::int32_t row, std::span<const ColumnCell> cells);

  /// Takes the cells of one column out of these rows, from top to bottom. The rows go on existing.
  [[nodiscard]] std::vector<RowCell> takeColumn(std::int32_t column, std::int32_t firstRow, std::int32_t lastRow);
  /// Puts cells, which stand by ascending row, where the column has none.
  void putColumn(std::int32_t column, std::span<const RowCell> cells);
  /// The columns that have cells in these rows, ascending.
  [[nodiscard]] std::vector<std::int32_t> columnsIn(const CellArea& area) const;

  /// Calls body(rowNumber, row) for each row that exists, in order.
  template <class Body>
  void forEachRow(Body&& body) const {
    forEachBand([&](std::int32_t firstRow, const Band& band) {
      for (std::size_t i = 0; i < bandRows; ++i) {
        if (band.rows[i].exists) body(firstRow + static_cast<std::int32_t>(i), band.rows[i]);
      }
    });
  }

  struct PlacedCell {
    std::int32_t column;
    const Cell* cell;
  };
  /// Calls body(rowNumber, row, cells) for each row that exists, in order; cells is a span of PlacedCell by ascending
  /// column, which holds for the call.
  template <class Body>
  void forEachRowWithCells(Body&& body) const {
    Crosscut crosscut;
    forEachBand([&](std::int32_t firstRow, const Band& band) {
      crosscut.take(band);
      for (std::size_t i = 0; i < bandRows; ++i) {
        if (band.rows[i].exists) body(firstRow + static_cast<std::int32_t>(i), band.rows[i], crosscut.row(i));
      }
    });
  }

  /// Calls body(rowNumber, column, cell) for each cell of the area, the columns of each band in turn, until it answers
  /// false; false if it did.
  template <class Body>
  bool forEachCell(const CellArea& area, Body&& body) const {
    const std::size_t lastBand = bandOf(area.lastRow);
    for (std::size_t i = bandOf(area.firstRow); i <= lastBand; ++i) {
      if (bands_[i] == nullptr) continue;
      const std::int32_t top = firstRowOf(i);
      const auto& strips = bands_[i]->strips;
      for (auto strip = lowerStrip(strips, area.firstColumn); strip != strips.end() && strip->column <= area.lastColumn;
           ++strip) {
        const auto end = lowerCell(strip->cells, area.lastRow + 1 - top);
        for (auto cell = lowerCell(strip->cells, area.firstRow - top); cell != end; ++cell) {
          if (!body(top + cell->rowInBand, strip->column, *cell)) return false;
        }
      }
    }
    return true;
  }

  [[nodiscard]] std::size_t cellCount() const;
  /// The smallest area that holds every cell with a value, and with a format too where asked; nothing for none.
  [[nodiscard]] std::optional<CellArea> usedArea(bool withFormats) const;
  /// Number of the first row at or behind the given one that exists; past the sheet for none.
  [[nodiscard]] std::int32_t nextRow(std::int32_t row) const noexcept;

  [[nodiscard]] const RowFormat& rowFormat(std::uint32_t number) const { return rowFormats_[number]; }
  /// The number of the format with these attributes.
  std::uint32_t addRowFormat(RowFormat format);
  [[nodiscard]] std::size_t rowFormatCount() const noexcept { return rowFormats_.size(); }

  std::vector<Formula> formulas;
  /// The formula of a cell that holds one.
  [[nodiscard]] Formula& formulaOf(const Cell& cell) { return formulas[static_cast<std::size_t>(cell.index)]; }
  [[nodiscard]] const Formula& formulaOf(const Cell& cell) const {
    return formulas[static_cast<std::size_t>(cell.index)];
  }
  std::unordered_map<std::uint64_t, CellExtras> extras;     ///< by keyOf the cell
  std::unordered_map<std::int32_t, std::string> rowExtras;  ///< elements of a row behind its cells, raw

  [[nodiscard]] static std::uint64_t keyOf(CellAddress at) noexcept {
    return (static_cast<std::uint64_t>(at.row) << 16) | static_cast<std::uint64_t>(at.column);
  }

 private:
  static constexpr std::size_t bandRows = 256;

  /// The cells that one column has in one band, from top to bottom; possibly none.
  struct Strip {
    std::int32_t column = 1;
    std::vector<Cell> cells;
  };
  struct Band {
    std::vector<Strip> strips;  ///< by ascending column
    std::array<Row, bandRows> rows;
  };

  /// The cells of one band in the order of its rows.
  class Crosscut {
   public:
    void take(const Band& band);
    [[nodiscard]] std::span<const PlacedCell> row(std::size_t rowInBand) const noexcept {
      return {cells_.data() + starts_[rowInBand], cells_.data() + starts_[rowInBand + 1]};
    }

   private:
    std::vector<PlacedCell> cells_;
    std::array<std::size_t, bandRows + 1> starts_{};
  };

  [[nodiscard]] static std::size_t bandOf(std::int32_t row) noexcept {
    return static_cast<std::size_t>(row - 1) / bandRows;
  }
  [[nodiscard]] static std::size_t rowInBand(std::int32_t row) noexcept {
    return static_cast<std::size_t>(row - 1) % bandRows;
  }
  [[nodiscard]] static std::int32_t firstRowOf(std::size_t band) noexcept {
    return static_cast<std::int32_t>(band * bandRows + 1);
  }
  [[nodiscard]] const Band* bandAt(std::int32_t row) const noexcept { return bands_[bandOf(row)].get(); }

  [[nodiscard]] static std::vector<Strip>::const_iterator lowerStrip(const std::vector<Strip>& strips,
                                                                     std::int32_t column) noexcept;
  /// @param rowInBand may lie outside of the band.
  [[nodiscard]] static std::vector<Cell>::const_iterator lowerCell(const std::vector<Cell>& cells,
                                                                   std::int32_t rowInBand) noexcept;

  /// Null where the band has no such column. Columns mostly follow one another, so the place can be told from the
  /// first one.
  [[nodiscard]] static const Strip* stripIn(const Band& band, std::int32_t column) noexcept {
    const std::vector<Strip>& strips = band.strips;
    if (strips.empty() || column < strips.front().column) return nullptr;
    const auto guess = static_cast<std::size_t>(column - strips.front().column);
    if (guess < strips.size() && strips[guess].column == column) return &strips[guess];
    return searchedStrip(strips, column);
  }
  /// The same for a row of a strip.
  [[nodiscard]] static const Cell* cellIn(const Strip& strip, std::size_t rowInBand) noexcept {
    const std::vector<Cell>& cells = strip.cells;
    if (cells.empty() || rowInBand < cells.front().rowInBand) return nullptr;
    const std::size_t guess = rowInBand - cells.front().rowInBand;
    if (guess < cells.size() && cells[guess].rowInBand == rowInBand) return &cells[guess];
    return searchedCell(cells, rowInBand);
  }
  [[nodiscard]] static const Strip* searchedStrip(const std::vector<Strip>& strips, std::int32_t column) noexcept;
  [[nodiscard]] static const Cell* searchedCell(const std::vector<Cell>& cells, std::size_t rowInBand) noexcept;

  [[nodiscard]] Band& makeBand(std::int32_t row);
  [[nodiscard]] static Strip& makeStrip(Band& band, std::int32_t column);
  static void makeStrips(Band& band, std::span<const ColumnCell> columns);

  template <class Body>
  void forEachBand(Body&& body) const {
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      if (bands_[i] != nullptr) body(firstRowOf(i), *bands_[i]);
    }
  }

  std::vector<std::unique_ptr<Band>> bands_;
  std::vector<RowFormat> rowFormats_;
  std::unordered_map<std::string, std::uint32_t> rowFormatNumbers_;
};

}  // namespace mervane::workbook
