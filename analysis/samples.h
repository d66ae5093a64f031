#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Measures of a finished clustering, as pure functions of the samples and their cluster numbers.
namespace mervane::analysis {

/// A row-major matrix that somebody else owns: one row a sample, one column a feature. The same shape serves for the
/// weight vectors of a map, one row a unit.
struct Samples {
  std::span<const double> values;  ///< rows() * columns elements
  std::size_t columns = 0;

  [[nodiscard]] std::size_t rows() const noexcept { return columns == 0 ? 0 : values.size() / columns; }
  [[nodiscard]] std::span<const double> row(std::size_t index) const noexcept {
    return values.subspan(index * columns, columns);
  }
};

/// One cluster number for each sample, from 1 to the number of clusters. A sample with any other number, 0 above
/// all, has no cluster and is left out of every measure.
using Labels = std::span<const std::int32_t>;

/// The sum of squared differences of two rows of the same length.
[[nodiscard]] inline double squaredDistance(std::span<const double> left, std::span<const double> right) noexcept {
  double sum = 0.0;
  for (std::size_t i = 0; i < left.size(); ++i) {
    const double difference = left[i] - right[i];
    sum += difference * difference;
  }
  return sum;
}

/// Whether a label names one of the clusters.
[[nodiscard]] inline bool isCluster(std::int32_t label, std::int32_t clusters) noexcept {
  return label >= 1 && label <= clusters;
}

}  // namespace mervane::analysis
