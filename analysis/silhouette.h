#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/samples.h"

namespace mervane::analysis {

/// Up to this many samples the silhouette is exact.
inline constexpr std::size_t silhouetteExactLimit = 5000;

struct Silhouette {
  /// Mean over the samples, from -1 to 1. None where fewer than two clusters hold a sample.
  std::optional<double> mean;
  /// How many samples it was computed from.
  std::size_t samplesUsed = 0;
  /// Whether these were fewer than there are.
  bool sampled = false;
};

/// The rows that stand for a larger set: the set is cut into silhouetteExactLimit slices of almost equal length, and
/// one row is taken from each. Its place in the slice follows from the slice's number by a fixed mixing function, so
/// that the choice is the same on each run and does not fall in step with data that repeat after a number of rows.
/// All rows in order where there are no more than silhouetteExactLimit.
[[nodiscard]] std::vector<std::size_t> silhouetteRows(std::size_t rows);

/// Silhouette with Euclidean distances (Rousseeuw, Journal of Computational and Applied Mathematics 20, 1987).
///
/// For a sample, a is its mean distance to the others of its cluster and b the smallest of its mean distances to the
/// samples of another cluster; its value is (b - a) / max(a, b), 0 for a sample that is alone in its cluster or
/// where both are 0. Above silhouetteExactLimit samples only the rows of silhouetteRows take part, both as
/// samples and as their neighbours.
[[nodiscard]] Silhouette silhouette(const Samples& samples, Labels labels, std::int32_t clusters);

}  // namespace mervane::analysis
