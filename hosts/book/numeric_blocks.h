#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "spreadsheet/cell_address.h"

namespace mervane::hosts {

/// Finds the largest rectangle of nothing but numbers: blocks are what is left of a sheet when each run of numbers of a
/// row is joined with an equal run right below it.
class NumericBlocks {
 public:
  /// A run of numbers, with none right before or behind it. Rows come in ascending order.
  void addRun(std::int32_t row, std::int32_t firstColumn, std::int32_t lastColumn);
  /// Two rows at least; nothing where there is none or where the largest is not alone. Asked once, at the end.
  [[nodiscard]] std::optional<sheet::CellArea> largest();

 private:
  void closeBefore(std::int32_t row);

  std::map<std::pair<std::int32_t, std::int32_t>, sheet::CellArea> open_;  ///< that reach the row before, by columns
  std::vector<sheet::CellArea> blocks_;
};

}  // namespace mervane::hosts
