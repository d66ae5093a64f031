#include "guard/proposed_numbers.h"

#include <vector>

#include "guard/counting_columns.h"
#include "mervane/convert.h"
#include "support/globals.h"

namespace mervane::guard {

std::optional<sheet::CellArea> proposedNumbers(BookCells& book, std::string_view sheet) {
  const auto block = book.numericBlock(sheet);
  if (!block) return std::nullopt;
  return widestRun(*block, [&](std::int32_t column) {
    std::vector<double> numbers;
    for (std::int32_t row = block->firstRow; row <= block->lastRow; ++row) {
      numbers.push_back(toDouble(book.cellValueOrEmpty(sheet, {row, column}), globals::locale()));
    }
    return !countsRows(numbers);
  });
}

}  // namespace mervane::guard
