#pragma once

#include <cmath>
#include <cstdint>

namespace mervane::bench {

/// Rate, radius and convex factor of a training with the default parameters, as the component sets them.
struct Schedule {
  std::int32_t epochs;
  std::int32_t rows;

  [[nodiscard]] double rate(std::int32_t epoch) const { return (1.0 - static_cast<double>(epoch) / epochs) * 0.5; }
  /// Ties to even.
  [[nodiscard]] std::int32_t radius(std::int32_t epoch) const {
    return static_cast<std::int32_t>(std::nearbyint((epochs - epoch) * 3.0 / (epochs * 1.2)));
  }
  /// @param position zero-based row.
  [[nodiscard]] double convexFactor(std::int32_t epoch, std::int32_t position) const {
    return static_cast<double>(epoch * rows + position) /
           (static_cast<double>(epochs) / 3.0 * static_cast<double>(rows));
  }
};

}  // namespace mervane::bench
