#pragma once

#include <cstdint>

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

/// English metric units, the lengths of drawings: 12700 in a point, 9525 in a pixel.
inline constexpr std::int64_t emuPerPoint = 12700;

/// A point of a sheet as a drawing says it: cell counted from 0, distance inside it.
struct AnchorPoint {
  std::int32_t column = 0;
  std::int64_t columnOffset = 0;  ///< EMU
  std::int32_t row = 0;
  std::int64_t rowOffset = 0;  ///< EMU
};

/// Where the columns and rows of one sheet lie. Lengths are points, counted from the sheet's top left corner;
/// hidden columns and rows have none. Rows and columns count from 1.
class Geometry {
 public:
  virtual ~Geometry() = default;
  [[nodiscard]] virtual double columnLeft(std::int32_t column) const = 0;
  [[nodiscard]] virtual double columnWidth(std::int32_t column) const = 0;
  [[nodiscard]] virtual double rowTop(std::int32_t row) const = 0;
  [[nodiscard]] virtual double rowHeight(std::int32_t row) const = 0;

  /// The anchor of a point; a point left of or above the sheet gives its corner.
  [[nodiscard]] AnchorPoint anchorAt(double left, double top) const;
  [[nodiscard]] double leftOf(const AnchorPoint& anchor) const;
  [[nodiscard]] double topOf(const AnchorPoint& anchor) const;
};

}  // namespace mervane::workbook
