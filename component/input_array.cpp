#include <cstddef>
#include <variant>

#include "component/input_element.h"
#include "component/wrapping_arithmetic.h"
#include "mervane/classifier3.h"

/// What the component asks of the array of Inputs: extents and column ranges.
namespace mervane {

const AnyArray& Classifier3::inputArray() const {
  return InputData_.array();
}

std::int32_t Classifier3::GetSamplesCount() const {
  const AnyArray& inputs = inputArray();
  return wrapping32::add(wrapping32::subtract(inputs.upperBound(1), inputs.lowerBound(1)), 1);
}

std::int32_t Classifier3::GetColumnsCount() const {
  const AnyArray& inputs = inputArray();
  return wrapping32::add(wrapping32::subtract(inputs.upperBound(2), inputs.lowerBound(2)), 1);
}

void Classifier3::CalculateColumnRanges() {
  // 1. NB: one element more than there are columns; the last one stays 0.
  const std::int32_t count = GetColumnsCount();
  MinValues_ = Array<double>({{0, count}});
  MaxValues_ = Array<double>({{0, count}});
  if (count == 0) return;

  const AnyArray& inputs = inputArray();
  // Arrays with more dimensions, and those without rows, fail at their first element.
  if (inputs.dimensions() != 2 || inputs.bounds()[0].count() == 0) raise(runtime::subscriptOutOfRange);

  std::visit(
      [&](const auto& array) {
        const auto elements = array.elements();
        const auto minimums = MinValues_.elements();
        const auto maximums = MaxValues_.elements();
        const auto columns = static_cast<std::size_t>(count);
        // 2.
        for (std::size_t k = 0; k < columns; ++k) {
          const double value = input::value(elements[k]);
          minimums[k] = value;
          maximums[k] = value;
        }
        // 3. NB: the ranges are typed numbers, so an element is compared as a number, one that is a text too.
        for (std::size_t row = columns; row < elements.size(); row += columns) {
          for (std::size_t k = 0; k < columns; ++k) {
            const double value = input::value(elements[row + k]);
            if (maximums[k] < value) maximums[k] = value;
            if (minimums[k] > value) minimums[k] = value;
          }
        }
      },
      inputs.storage());
}

}  // namespace mervane
