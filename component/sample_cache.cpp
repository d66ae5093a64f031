#include "component/sample_cache.h"

#include <new>
#include <variant>

#include "component/input_element.h"
#include "component/scale_value.h"
#include "support/procedures.h"

namespace mervane {

namespace {

double scaledInto(double value, double minimum, double maximum) noexcept {
  return scaleValue(value, minimum, maximum, scaledMinimum, scaledMaximum);
}

/// Converts whole rows into `values` and counts them up in `rows`; raises at the first element that does not convert.
template <class T>
void convertRows(std::span<const T> elements, std::span<const double> minimums, std::span<const double> maximums,
                 bool scaled, std::size_t columns, std::vector<double>& values, std::int64_t& rows) {
  const std::size_t count = elements.size() / columns;
  for (std::size_t row = 0; row < count; ++row) {
    const std::size_t start = row * columns;
    for (std::size_t column = 0; column < columns; ++column) {
      const double value = input::value(elements[start + column]);
      values[start + column] = scaled ? scaledInto(value, minimums[column], maximums[column]) : value;
    }
    ++rows;
  }
}

}  // namespace

bool SampleCache::fill(const AnyArray& inputs, std::span<const double> minimums, std::span<const double> maximums,
                       bool scaled) {
  if (filled_ && scaled_ == scaled) return true;
  drop();
  const Bounds& columnBounds = inputs.bounds().at(1);
  columns_ = static_cast<std::size_t>(columnBounds.count());
  try {
    std::visit(
        [&](const auto& array) {
          using Element = typename std::decay_t<decltype(array)>::Element;
          if constexpr (std::is_same_v<Element, double>) {
            if (!scaled) {  // OPTIMIZATION: raw doubles go to the engine from the client's own array.
              values_ = array.elements();
              rows_ = static_cast<std::int64_t>(values_.size() / columns_);
              return;
            }
          }
          owned_.resize(array.elements().size());
          attempt([&] { convertRows(array.elements(), minimums, maximums, scaled, columns_, owned_, rows_); });
          values_ = owned_;
        },
        inputs.storage());
  } catch (const std::bad_alloc&) {
    drop();
    return false;
  }
  scaled_ = scaled;
  filled_ = true;
  return true;
}

void SampleCache::drop() noexcept {
  filled_ = false;
  rows_ = 0;
  columns_ = 0;
  values_ = {};
  std::vector<double>().swap(owned_);
}

std::vector<double> readSample(const AnyArray& inputs, std::int32_t row, std::int32_t columns,
                               std::span<const double> minimums, std::span<const double> maximums, bool scaled) {
  std::vector<double> sample(static_cast<std::size_t>(columns));
  if (columns == 0) return sample;
  const std::int64_t firstColumn = inputs.lowerBound(2);
  std::visit(
      [&](const auto& array) {
        for (std::size_t j = 0; j < sample.size(); ++j) {
          const auto column = static_cast<std::int32_t>(firstColumn + static_cast<std::int64_t>(j));
          const double value = input::value(array.at(row, column));
          sample[j] = scaled ? scaledInto(value, minimums[j], maximums[j]) : value;
        }
      },
      inputs.storage());
  return sample;
}

}  // namespace mervane
