#pragma once

#include <cstddef>
#include <span>

namespace mervane::engine {

/// The convex combination of a sample with the start value of the weights: F x + (1 - F) centre.
/// @param factor 0 <= factor <= 1; with 1 the sample is taken as it is.
inline void combineConvex(std::span<const double> sample, double factor, double centre, std::span<double> result) {
  if (factor == 1.0) {
    for (std::size_t j = 0; j < sample.size(); ++j) result[j] = sample[j];
    return;
  }
  const double rest = (1.0 - factor) * centre;
  for (std::size_t j = 0; j < sample.size(); ++j) result[j] = factor * sample[j] + rest;
}

/// The factor as the network takes it: above 1 it counts as 1, below 0 as 0.
/// @param factor not a not-a-number.
[[nodiscard]] inline double effectiveFactor(double factor) {
  const double atMostOne = factor < 1.0 ? factor : 1.0;
  return atMostOne > 0.0 ? atMostOne : 0.0;
}

}  // namespace mervane::engine
