#pragma once

namespace mervane {

/// Maps a value linearly from a source range onto a destination range; the first case that applies decides.
[[nodiscard]] constexpr double scaleValue(double value, double minSource, double maxSource, double minDestination,
                                          double maxDestination) noexcept {
  // 1. NB: not clamped. What lies outside keeps its own size.
  if (value < minSource || value > maxSource) return value;
  // 2.
  if (minDestination == maxDestination) return minDestination;
  // 3.
  if (minSource == maxSource) return minDestination;
  // 4. NB: the order of the operations decides the last bit.
  return (value - minSource) / (maxSource - minSource) * (maxDestination - minDestination) + minDestination;
}

/// Where the scaling of samples puts the smallest and the largest value of a column.
inline constexpr double scaledMinimum = 0.001;
inline constexpr double scaledMaximum = 0.999;

}  // namespace mervane
