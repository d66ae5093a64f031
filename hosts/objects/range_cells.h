#pragma once

#include <cstdint>
#include <functional>

#include "hosts/objects/arguments.h"
#include "spreadsheet/cell_address.h"
#include "spreadsheet/object.h"

namespace mervane::hosts {

/// The cells of a range, which may be looked at as its rows or columns, and those that its members lead to. Indexes are
/// counted from 1 at the first cell and may lie outside of the range; cells that are not on the sheet raise
/// applicationDefined.
struct RangeCells {
  enum class View : std::uint8_t { cells, rows, columns };

  sheet::CellArea area;
  View view = View::cells;

  /// A cell; of rows or columns, one of those where only one index is given.
  [[nodiscard]] RangeCells item(Arguments arguments) const;
  /// By row and column, or by one index that counts the cells row by row and goes on below the range.
  [[nodiscard]] RangeCells cell(Arguments arguments) const;
  [[nodiscard]] RangeCells row(Arguments arguments) const;
  [[nodiscard]] RangeCells column(Arguments arguments) const;
  [[nodiscard]] RangeCells offset(Arguments arguments) const;
  [[nodiscard]] RangeCells resize(Arguments arguments) const;
  [[nodiscard]] RangeCells entireColumns() const;

  /// How many cells, rows or columns these are.
  [[nodiscard]] std::int64_t count() const noexcept;
  /// The same as the object model tells it; raises overflow where it is more than that can tell.
  [[nodiscard]] std::int32_t shownCount() const;
  /// One of the cells, rows or columns, counted from 0; cells are counted row by row.
  [[nodiscard]] RangeCells element(std::int64_t position) const noexcept;
};

/// Goes through the elements; `object` makes the host's object for one.
[[nodiscard]] sheet::ObjectRef enumeratorOf(const RangeCells& cells, std::function<Variant(const RangeCells&)> object);

/// Raises applicationDefined for cells that are no whole columns, whose widths cannot follow from them.
void requireWholeColumns(const sheet::CellArea& area);

}  // namespace mervane::hosts
