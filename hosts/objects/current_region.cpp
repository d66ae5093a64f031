#include "hosts/objects/current_region.h"

#include <algorithm>

namespace mervane::hosts {

using sheet::CellArea;

CellArea currentRegion(CellArea area, const std::function<bool(const CellArea&)>& isFilled,
                       const std::vector<CellArea>& barriers) {
  for (bool grew = true; grew;) {
    grew = false;
    const auto reach = [&](std::int32_t CellArea::*edge, std::int32_t by, std::int32_t limit) {
      if (area.*edge == limit) return false;
      CellArea grown = area;
      grown.*edge += by;
      if (std::ranges::any_of(barriers, [&](const CellArea& barrier) { return barrier.meets(grown); })) return false;
      // The strip beside the area, one cell longer at both ends.
      CellArea strip{std::max(area.firstRow - 1, 1), std::max(area.firstColumn - 1, 1),
                     std::min(area.lastRow + 1, sheet::lastSheetRow),
                     std::min(area.lastColumn + 1, sheet::lastSheetColumn)};
      const bool isRow = edge == &CellArea::firstRow || edge == &CellArea::lastRow;
      if (isRow) {
        strip.firstRow = strip.lastRow = grown.*edge;
      } else {
        strip.firstColumn = strip.lastColumn = grown.*edge;
      }
      if (!isFilled(strip)) return false;
      area = grown;
      grew = true;
      return true;
    };
    // OPTIMIZATION: a side is pushed as far as it goes before the next one, since looking along a long side takes long.
    while (reach(&CellArea::firstRow, -1, 1)) {
    }
    while (reach(&CellArea::lastRow, 1, sheet::lastSheetRow)) {
    }
    while (reach(&CellArea::firstColumn, -1, 1)) {
    }
    while (reach(&CellArea::lastColumn, 1, sheet::lastSheetColumn)) {
    }
  }
  return area;
}

}  // namespace mervane::hosts
