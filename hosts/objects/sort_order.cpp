#include "hosts/objects/sort_order.h"

#include "hosts/objects/refuse.h"

namespace mervane::hosts {

namespace {

constexpr std::int32_t orderDescending = 2;

}  // namespace

SortOrder sortOrder(Arguments arguments, const sheet::SheetArea& cells, const AreaOf& areaOf) {
  atMost(arguments, 2);
  const sheet::SheetArea key = areaArgument(arguments, 0, areaOf);
  if (key.sheet != cells.sheet || key.area.firstColumn < cells.area.firstColumn ||
      key.area.firstColumn > cells.area.lastColumn) {
    refuse("The sort key " + a1(key.area) + " lies outside of the cells to sort, " + a1(cells.area) + ".");
  }
  const bool descending = isGiven(arguments, 1) && wholeArgument(arguments, 1) == orderDescending;
  return {key.area.firstColumn, descending};
}

}  // namespace mervane::hosts
