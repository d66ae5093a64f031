#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mervane/variant.h"
#include "spreadsheet/cell_address.h"

namespace mervane::guard {

using sheet::CellAddress;
using sheet::CellArea;

/// What a program wants to know of the sheets of a workbook that is open, in whatever way, beside its object model.
class BookCells {
 public:
  virtual ~BookCells() = default;

  [[nodiscard]] virtual std::vector<std::string> sheetNames() const = 0;
  [[nodiscard]] virtual std::string activeSheetName() const = 0;

  /// The cells with values of one sheet. The others are not read for it.
  [[nodiscard]] virtual std::optional<CellArea> usedArea(std::string_view sheet) = 0;

  /// The place that a reference names, in A1 form, with or without a sheet, or a defined name; nothing where it
  /// names none.
  struct Place {
    std::string sheet;
    CellArea area;
  };
  [[nodiscard]] virtual std::optional<Place> find(std::string_view reference) const = 0;

  /// What the cell shows, empty for an empty one. Raises subscriptOutOfRange for an unknown sheet.
  [[nodiscard]] virtual std::string cellText(std::string_view sheet, CellAddress at) = 0;
  /// Its formula with the equals sign, or nothing.
  [[nodiscard]] virtual std::optional<std::string> cellFormula(std::string_view sheet, CellAddress at) = 0;
  /// Its value as Range.Value gives it.
  [[nodiscard]] virtual Variant cellValue(std::string_view sheet, CellAddress at) = 0;
  /// The same, but a formula that was never computed is empty.
  [[nodiscard]] virtual Variant cellValueOrEmpty(std::string_view sheet, CellAddress at) = 0;
  /// The cells of the area that have a comment, which no sort takes along.
  [[nodiscard]] virtual std::vector<CellAddress> commentedCells(std::string_view sheet, const CellArea& area) = 0;
  /// The largest block of nothing but numbers on the sheet, two rows and a column at least, with cells of other kinds
  /// all around it. Nothing where there is none, or where two are equally large.
  [[nodiscard]] virtual std::optional<CellArea> numericBlock(std::string_view sheet) = 0;
};

}  // namespace mervane::guard
