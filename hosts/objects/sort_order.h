#pragma once

#include <cstdint>

#include "hosts/objects/arguments.h"
#include "spreadsheet/cell_address.h"

namespace mervane::hosts {

/// What the rows of a range are sorted by.
struct SortOrder {
  std::int32_t column = 1;  ///< of the sheet
  bool descending = false;
};

/// The arguments of Sort: a key among the cells to sort, then the order. Raises applicationDefined for a key elsewhere.
[[nodiscard]] SortOrder sortOrder(Arguments arguments, const sheet::SheetArea& cells, const AreaOf& areaOf);

}  // namespace mervane::hosts
