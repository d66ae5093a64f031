#include "guard/counting_columns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace mervane::guard {

bool countsRows(std::span<const double> column) {
  constexpr std::size_t fewestInOrder = 3;
  constexpr std::size_t fewestInAnyOrder = 10;
  if (column.size() < fewestInOrder || column.front() != std::floor(column.front())) return false;
  std::vector<double> numbers(column.begin(), column.end());
  if (numbers.size() >= fewestInAnyOrder) std::ranges::sort(numbers);
  for (std::size_t i = 1; i < numbers.size(); ++i) {
    if (numbers[i] != numbers[i - 1] + 1.0) return false;
  }
  return true;
}

std::optional<sheet::CellArea> widestRun(const sheet::CellArea& area,
                                         const std::function<bool(std::int32_t column)>& isMeasured) {
  std::optional<sheet::CellArea> widest;
  for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
    if (!isMeasured(column)) continue;
    const std::int32_t first = column;
    while (column < area.lastColumn && isMeasured(column + 1)) ++column;
    const sheet::CellArea run{area.firstRow, first, area.lastRow, column};
    if (!widest || run.columns() > widest->columns()) widest = run;
  }
  return widest;
}

}  // namespace mervane::guard
