#pragma once

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

class Sheet;

/// Puts the sheet's selection on the area; its first cell is the active one.
void select(Sheet& sheet, const CellArea& area);
/// The cell that the selection stands on; A1 where the sheet says none.
[[nodiscard]] CellAddress activeCell(Sheet& sheet);
/// Shows the sheet's tab as chosen or not.
void setTabSelected(Sheet& sheet, bool selected);

}  // namespace mervane::workbook
