#pragma once

#include <functional>
#include <vector>

#include "spreadsheet/cell_address.h"

namespace mervane::hosts {

/// The block of filled cells around an area: it grows over every neighbouring cell with a value, corners included, as
/// far as it meets none of the barriers.
[[nodiscard]] sheet::CellArea currentRegion(sheet::CellArea area,
                                            const std::function<bool(const sheet::CellArea&)>& isFilled,
                                            const std::vector<sheet::CellArea>& barriers);

}  // namespace mervane::hosts
