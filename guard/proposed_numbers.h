#pragma once

#include <optional>
#include <string_view>

#include "guard/book_cells.h"

namespace mervane::guard {

/// The numbers of a sheet that are proposed to be clustered: its largest block of nothing but numbers, of which columns
/// that only count the rows are left out. Nothing where there is no one such block.
[[nodiscard]] std::optional<sheet::CellArea> proposedNumbers(BookCells& book, std::string_view sheet);

}  // namespace mervane::guard
