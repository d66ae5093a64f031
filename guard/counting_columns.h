#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "spreadsheet/cell_address.h"

namespace mervane::guard {

/// Whether a column of numbers only counts its rows: whole numbers that follow each other by one. Ten rows and more
/// may stand in any order, as a sort leaves them; of fewer than three nothing is said.
[[nodiscard]] bool countsRows(std::span<const double> column);

/// The widest run of an area's columns that hold measured numbers, the leftmost of equals; nothing where no column
/// does.
[[nodiscard]] std::optional<sheet::CellArea> widestRun(const sheet::CellArea& area,
                                                       const std::function<bool(std::int32_t column)>& isMeasured);

}  // namespace mervane::guard
