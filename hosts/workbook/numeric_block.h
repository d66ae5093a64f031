#pragma once

#include <optional>

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

class Sheet;

/// The largest rectangle of nothing but numbers: blocks are what is left of the sheet when each run of numbers of a row
/// is joined with an equal run right below it. Two rows at least; nothing where there is none or where the largest is
/// not alone.
[[nodiscard]] std::optional<CellArea> numericBlock(Sheet& sheet);

}  // namespace mervane::workbook
