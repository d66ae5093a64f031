#pragma once

#include <cstdint>

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

class Sheet;

/// Puts all rows of the area into the order of one of its columns: numbers and dates, then texts without regard to
/// case, then booleans, then errors; empty cells last in either direction. Rows with equal keys keep their order.
/// Values, formulas, formats and hyperlinks of the area's cells move, heights of rows and all else outside of the area
/// stay; a formula moves as it is copied (see sortedFormula). Of the key column the values alone move: a caller that
/// writes keys into a column, sorts, and puts the old values back has the column as it was.
/// Raises applicationDefined, and moves nothing, where merged cells, array formulas or hidden rows are in the way,
/// where the sheet is protected, and for a key formula without a computed value. The application would sort the rows
/// that can be seen alone, and leave the others between them.
void sortRows(Sheet& sheet, const CellArea& area, std::int32_t keyColumn, bool descending);

}  // namespace mervane::workbook
