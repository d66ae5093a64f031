#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <vector>

#include "calc/office.h"

namespace mervane::addin {

/// Where the rows of an area stand once they have been sorted.
struct RowOrder {
  /// What moves: the rows from the first column of the sheet to the column beside the inputs, whose contents do not
  /// matter.
  star::table::CellRangeAddress moved;
  /// For each row its place in the area, counted from 0, at which it is to stand.
  std::vector<sal_Int32> places;
};

/// The order that a stable sort by these numbers gives.
[[nodiscard]] std::vector<sal_Int32> placesBySort(const std::vector<std::int32_t>& keys);
[[nodiscard]] std::vector<sal_Int32> inverse(const std::vector<sal_Int32>& places);

/// Moves rows by the office's own sort, so that all goes along that goes along with sorting: comments, links, formats
/// of single letters, rules of validity. The last column of the area is written over.
void moveRows(const uno::Reference<star::sheet::XSpreadsheet>& sheet, const RowOrder& order);

}  // namespace mervane::addin
