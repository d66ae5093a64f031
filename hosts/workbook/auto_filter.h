#pragma once

#include <optional>
#include <string>

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

class Book;
class Sheet;

/// Whether the sheet shows filter arrows. Those of a table are the table's own and do not count.
[[nodiscard]] bool hasAutoFilter(Sheet& sheet);

/// Switches the filter arrows on over the area, or over the table around it where it is one cell, as far as that leaves
/// tables, pivot tables and merged cells alone; off where they are on. Inside a table, the table's own arrows are
/// switched. Switching off shows the rows that the filter hid. Raises applicationDefined where there is nothing to
/// filter and where the sheet is protected.
void toggleAutoFilter(Book& book, Sheet& sheet, const CellArea& area);

}  // namespace mervane::workbook
