#include "hosts/workbook/geometry.h"

#include <algorithm>
#include <cmath>

namespace mervane::workbook {

namespace {

/// The last of 1..count whose start is not behind the position; starts ascend with the index.
template <class Start>
std::int32_t lastStartingBefore(std::int32_t count, double position, Start start) {
  std::int32_t low = 1;
  std::int32_t high = count;
  while (low < high) {
    const std::int32_t middle = low + (high - low + 1) / 2;
    if (start(middle) <= position) {
      low = middle;
    } else {
      high = middle - 1;
    }
  }
  return low;
}

std::int64_t emu(double points) {
  return static_cast<std::int64_t>(std::floor(points * emuPerPoint + 0.5));
}

}  // namespace

AnchorPoint Geometry::anchorAt(double left, double top) const {
  left = std::max(left, 0.0);
  top = std::max(top, 0.0);
  const std::int32_t column =
      lastStartingBefore(lastSheetColumn, left, [&](std::int32_t one) { return columnLeft(one); });
  const std::int32_t row = lastStartingBefore(lastSheetRow, top, [&](std::int32_t one) { return rowTop(one); });
  AnchorPoint anchor;
  anchor.column = column - 1;
  anchor.columnOffset = emu(std::min(left - columnLeft(column), columnWidth(column)));
  anchor.row = row - 1;
  anchor.rowOffset = emu(std::min(top - rowTop(row), rowHeight(row)));
  return anchor;
}

double Geometry::leftOf(const AnchorPoint& anchor) const {
  const std::int32_t column = std::clamp(anchor.column + 1, 1, lastSheetColumn);
  return columnLeft(column) + static_cast<double>(anchor.columnOffset) / emuPerPoint;
}

double Geometry::topOf(const AnchorPoint& anchor) const {
  const std::int32_t row = std::clamp(anchor.row + 1, 1, lastSheetRow);
  return rowTop(row) + static_cast<double>(anchor.rowOffset) / emuPerPoint;
}

}  // namespace mervane::workbook
