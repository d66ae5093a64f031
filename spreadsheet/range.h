#pragma once

#include <cstdint>
#include <string>

#include "spreadsheet/formats.h"

namespace mervane::sheet {

inline constexpr std::int32_t ascending = 1;

class Worksheet;
class Range;

/// The rows or columns of a range; enumerated, they are ranges.
class RangeParts : public Proxy {
 public:
  using Proxy::Proxy;
  std::int32_t Count() const { return get<std::int32_t>(member::Count); }
  sheet::Range EntireColumn() const;
};

/// A rectangle of cells, one or many.
class Range : public Proxy {
 public:
  using Proxy::Proxy;

  /// The cell at a position counted from the top-left cell of this range, from 1. The indexes are not bounded
  /// by the range: 0 is the row above or the column to the left, larger ones lie below or to the right.
  /// Raises where that is off the sheet.
  Range Cells(std::int32_t row, std::int32_t column) const { return get<Range>(member::Cells, row, column); }
  /// The same through the range's default member.
  Range Item(std::int32_t row, std::int32_t column) const { return get<Range>(member::Item, row, column); }
  /// All cells; enumerated row by row, left to right.
  Range Cells() const { return get<Range>(member::Cells); }
  RangeParts Rows() const { return get<RangeParts>(member::Rows); }
  RangeParts Columns() const { return get<RangeParts>(member::Columns); }
  /// One column of the range, from 1.
  Range Columns(std::int32_t column) const { return get<Range>(member::Columns, column); }
  /// Absolute number of the first column, from 1.
  std::int32_t Column() const { return get<std::int32_t>(member::Column); }
  /// The range of the same size shifted; raises where it would leave the sheet.
  Range Offset(std::int32_t rows, std::int32_t columns) const { return get<Range>(member::Offset, rows, columns); }
  /// The range with the same top-left cell and another size; raises where it would leave the sheet.
  Range Resize(std::int32_t rows, std::int32_t columns) const { return get<Range>(member::Resize, rows, columns); }

  /// A single cell's value; text that begins with an equals sign is written as a formula.
  Variant Value() const { return get<Variant>(member::Value); }
  void Value(const Variant& value) const { put(member::Value, value); }
  void NumberFormat(const std::string& format) const { put(member::NumberFormat, format); }
  sheet::Font Font() const { return get<sheet::Font>(member::Font); }
  sheet::Interior Interior() const { return get<sheet::Interior>(member::Interior); }
  /// @param edge edgeLeft to insideHorizontal. Setting a line that the range lacks raises.
  sheet::Border Borders(std::int32_t edge) const { return get<sheet::Border>(member::Borders, edge); }

  /// Moves the rows of this range into the order of the key column. Every row takes part, the first included.
  void Sort(const Range& key, std::int32_t order) const { call<void>(member::Sort, key, order); }
  /// Switches the filter arrows of the sheet on or off.
  void AutoFilter() const { call<void>(member::AutoFilter); }
  void AutoFit() const { call<void>(member::AutoFit); }
  void Select() const { call<void>(member::Select); }

  /// Position and size in points.
  double Left() const { return get<double>(member::Left); }
  double Top() const { return get<double>(member::Top); }
  double Width() const { return get<double>(member::Width); }
  sheet::Worksheet Worksheet() const;
};

inline Range RangeParts::EntireColumn() const {
  return get<sheet::Range>(member::EntireColumn);
}

}  // namespace mervane::sheet
