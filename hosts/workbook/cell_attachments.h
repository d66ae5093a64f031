#pragma once

#include <cstdint>
#include <vector>

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

class Sheet;

/// What belongs to cells but is kept apart from them.

/// Takes the hyperlinks of a sorted area along with their cells. One that reaches over all rows of the area stays, and
/// so do those of the key column.
/// @param order the row that comes to each place, both counted from the first row of the area.
void moveHyperlinks(Sheet& sheet, const CellArea& area, std::int32_t keyColumn, const std::vector<std::int32_t>& order);

/// The cells of the area that have a comment. A sort leaves the comments where they are.
[[nodiscard]] std::vector<CellAddress> cellsWithComments(Sheet& sheet, const CellArea& area);

}  // namespace mervane::workbook
