#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "mervane/array.h"
#include "mervane/variant.h"
#include "spreadsheet/cell_address.h"

/// The values of several cells as the object model hands them over.
namespace mervane::hosts {

/// Raises outOfMemory for more cells than are read or filled at once.
void requireBounded(const sheet::CellArea& area);

/// A table counted from 1, filled row by row with what `read` answers for a cell.
template <class Read>
[[nodiscard]] Variant tableOf(const sheet::CellArea& area, const Read& read) {
  requireBounded(area);
  Array<Variant> values({{1, area.rows()}, {1, area.columns()}});
  std::size_t at = 0;
  for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
    for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
      values.elements()[at++] = read(sheet::CellAddress{row, column});
    }
  }
  return Variant(std::move(values));
}

/// An array as it is assigned to cells: a table, or one row that is the same for all rows of the cells.
class AssignedArray {
 public:
  /// Raises typeMismatch for an array of another shape. The array has to outlive the object.
  explicit AssignedArray(const AnyArray& values);
  /// The value for a cell of the range, counted from 0; #N/A where the array has no element for it.
  [[nodiscard]] Variant at(std::int32_t row, std::int32_t column) const;

 private:
  const AnyArray& values_;
  bool isTable_;
};

}  // namespace mervane::hosts
