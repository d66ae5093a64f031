#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "mervane/variant.h"

namespace mervane {

/// The samples of Inputs as the engine gets them: doubles, scaled or raw, one row behind the other.
///
/// OPTIMIZATION: rows are converted and scaled once and serve every epoch. That is the same as doing it anew for each
/// sample, because an array never changes behind a Variant and the column ranges change only together with it.
class SampleCache {
 public:
  /// Fills the cache, or leaves it as it is where it was filled with the same choice of scaling since the last drop.
  /// False where there is no memory for it; the samples then have to be read one by one.
  /// @param inputs two-dimensional, with at least one column; must outlive the filled cache.
  /// @param minimums, maximums one range for each column.
  [[nodiscard]] bool fill(const AnyArray& inputs, std::span<const double> minimums, std::span<const double> maximums,
                          bool scaled);
  void drop() noexcept;

  /// Rows from the first one on that are there: all of them, or those before the first that does not convert.
  [[nodiscard]] std::int64_t rows() const noexcept { return rows_; }
  [[nodiscard]] std::span<const double> block(std::int64_t firstRow, std::int64_t count) const {
    return values_.subspan(static_cast<std::size_t>(firstRow) * columns_, static_cast<std::size_t>(count) * columns_);
  }

 private:
  bool filled_ = false;
  bool scaled_ = false;
  std::int64_t rows_ = 0;
  std::size_t columns_ = 0;
  std::span<const double> values_;
  std::vector<double> owned_;
};

/// One row of a two-dimensional array as a sample, taken element by element; raises what an element raises.
/// @param row an index within the array's own bounds, otherwise raises subscriptOutOfRange.
[[nodiscard]] std::vector<double> readSample(const AnyArray& inputs, std::int32_t row, std::int32_t columns,
                                             std::span<const double> minimums, std::span<const double> maximums,
                                             bool scaled);

}  // namespace mervane
