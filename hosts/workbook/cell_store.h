#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
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
  std::uint16_t column = 0;  ///< from 1, as everywhere
  CellKind kind = CellKind::empty;
  bool hasExtras = false;  ///< attributes or elements that we only keep; see CellStore::extras
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
  std::vector<Cell> cells;  ///< by ascending column
  std::uint32_t format = 0;
  bool exists = false;  ///< the file has an element for it, or a cell was made in it
};

/// The cells of one sheet. Memory is proportional to the cells that exist; a cell of a row without gaps is
/// found at once, any other one by bisection of its row.
class CellStore {
 public:
  CellStore();

  [[nodiscard]] const Cell* find(CellAddress at) const noexcept {
    const Row* row = rowAt(at.row);
    return row == nullptr ? nullptr : findIn(*row, at.column);
  }
  /// The cell, made where it is missing; then it is empty and has the format 0.
  [[nodiscard]] Cell& make(CellAddress at);
  [[nodiscard]] Cell* find(CellAddress at) noexcept {
    return const_cast<Cell*>(static_cast<const CellStore*>(this)->find(at));
  }

  /// Null where the row was never mentioned.
  [[nodiscard]] const Row* rowAt(std::int32_t row) const noexcept {
    const Page* page = pages_[static_cast<std::size_t>(row - 1) / pageRows].get();
    return page == nullptr ? nullptr : &(*page)[static_cast<std::size_t>(row - 1) % pageRows];
  }
  [[nodiscard]] Row& makeRow(std::int32_t row);

  /// Calls body(rowNumber, row) for each row that exists, in order.
  template <class Body>
  void forEachRow(Body&& body) const {
    for (std::size_t page = 0; page < pages_.size(); ++page) {
      if (pages_[page] == nullptr) continue;
      for (std::size_t i = 0; i < pageRows; ++i) {
        const Row& row = (*pages_[page])[i];
        if (row.exists) body(static_cast<std::int32_t>(page * pageRows + i + 1), row);
      }
    }
  }

  /// The smallest area that holds every cell with a value, and with a format too where asked; nothing for none.
  [[nodiscard]] std::optional<CellArea> usedArea(bool withFormats) const;
  /// Number of the first row at or behind the given one that exists; past the sheet for none.
  [[nodiscard]] std::int32_t nextRow(std::int32_t row) const noexcept;

  [[nodiscard]] const RowFormat& rowFormat(std::uint32_t number) const { return rowFormats_[number]; }
  /// The number of the format with these attributes.
  std::uint32_t addRowFormat(RowFormat format);
  [[nodiscard]] std::size_t rowFormatCount() const noexcept { return rowFormats_.size(); }

  std::vector<Formula> formulas;
  std::unordered_map<std::uint64_t, CellExtras> extras;     ///< by keyOf the cell
  std::unordered_map<std::int32_t, std::string> rowExtras;  ///< elements of a row behind its cells, raw

  [[nodiscard]] static std::uint64_t keyOf(CellAddress at) noexcept {
    return (static_cast<std::uint64_t>(at.row) << 16) | static_cast<std::uint64_t>(at.column);
  }

 private:
  static constexpr std::size_t pageRows = 256;
  using Page = std::array<Row, pageRows>;

  [[nodiscard]] static const Cell* findIn(const Row& row, std::int32_t column) noexcept;

  std::vector<std::unique_ptr<Page>> pages_;
  std::vector<RowFormat> rowFormats_;
  std::unordered_map<std::string, std::uint32_t> rowFormatNumbers_;
};

}  // namespace mervane::workbook
