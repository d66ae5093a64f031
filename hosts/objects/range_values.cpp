#include "hosts/objects/range_values.h"

#include "mervane/runtime_errors.h"

namespace mervane::hosts {

namespace {

constexpr std::int64_t mostValues = 20'000'000;
constexpr std::int32_t errorNotAvailable = 2042;

}  // namespace

void requireBounded(const sheet::CellArea& area) {
  if (area.cells() > mostValues) raise(runtime::outOfMemory);
}

AssignedArray::AssignedArray(const AnyArray& values) : values_(values), isTable_(values.dimensions() == 2) {
  if (!isTable_ && values.dimensions() != 1) raise(runtime::typeMismatch);
}

Variant AssignedArray::at(std::int32_t row, std::int32_t column) const {
  const std::int32_t across = values_.lowerBound(isTable_ ? 2 : 1) + column;
  const std::int32_t down = isTable_ ? values_.lowerBound(1) + row : 0;
  const bool has = across <= values_.upperBound(isTable_ ? 2 : 1) && (!isTable_ || down <= values_.upperBound(1));
  if (!has) return Variant(ErrorValue{errorNotAvailable});
  return isTable_ ? values_.at(down, across) : values_.at(across);
}

}  // namespace mervane::hosts
