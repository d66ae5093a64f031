#pragma once

#include <cmath>
#include <cstdint>

namespace mervane::calc {

/// The office counts lengths in hundredths of a millimetre, the object model in points.
inline constexpr double hundredthsPerPoint = 2540.0 / 72.0;

[[nodiscard]] inline double toPoints(std::int32_t hundredths) {
  return hundredths / hundredthsPerPoint;
}
[[nodiscard]] inline std::int32_t toHundredths(double points) {
  return static_cast<std::int32_t>(std::floor(points * hundredthsPerPoint + 0.5));
}

}  // namespace mervane::calc
