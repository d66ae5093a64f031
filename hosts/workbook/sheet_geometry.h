#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "hosts/workbook/geometry.h"

namespace mervane::workbook {

class CellStore;
class Columns;
class SheetFrame;

/// Widths and heights of one sheet as its part says them, defaults included. A width in characters becomes whole pixels
/// at 96 to the inch, of three quarters of a point each, by the width of the workbook's plain digit.
class SheetGeometry final : public Geometry {
 public:
  SheetGeometry(const CellStore& cells, const Columns& columns, const SheetFrame& frame, std::int32_t digitPixels);

  [[nodiscard]] double columnLeft(std::int32_t column) const override;
  [[nodiscard]] double columnWidth(std::int32_t column) const override;
  [[nodiscard]] double rowTop(std::int32_t row) const override;
  [[nodiscard]] double rowHeight(std::int32_t row) const override;

  /// Widths and heights are read anew at the next question.
  void forget() noexcept;
  /// The width in characters that gives this many pixels inside a column, its margins included.
  [[nodiscard]] static double charactersFor(double textPixels, std::int32_t digitPixels) noexcept;

 private:
  struct Deviation {
    std::int32_t row;
    double topAfter;  ///< top of the next row
  };
  void readColumns() const;
  void readRows() const;

  const CellStore& cells_;
  const Columns& columns_;
  const SheetFrame& frame_;
  std::int32_t digitPixels_;
  mutable double defaultHeight_ = 15.0;
  mutable std::vector<double> lefts_;
  mutable std::vector<Deviation> deviations_;
  mutable bool rowsRead_ = false;
};

}  // namespace mervane::workbook
