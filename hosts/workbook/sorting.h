#pragma once

#include <cstdint>

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

class Sheet;

/// Puts all rows of the area into the order of one of its columns: numbers and dates, then texts without regard to
/// case, then booleans, then errors; empty cells last in either direction. Rows with equal keys keep their order.
/// Values, formulas and formats of the area's cells move, heights of rows and all else outside of the area stay; a
/// formula goes on naming the cells of its own row (see rowMovedFormula). Raises applicationDefined, and moves nothing,
/// where merged cells or array formulas are in the way, where the sheet is protected, and for a key formula without a
/// computed value.
void sortRows(Sheet& sheet, const CellArea& area, std::int32_t keyColumn, bool descending);

}  // namespace mervane::workbook
