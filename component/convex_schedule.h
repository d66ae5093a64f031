#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "component/wrapping_arithmetic.h"

namespace mervane {

/// How far a sample of one epoch has got into the convex combination. By design not limited: the factor starts near 0,
/// passes 1 about a third of the way through training and ends a little above 3.
class ConvexSchedule {
 public:
  ConvexSchedule(std::int32_t epoch, std::int32_t samples, std::int32_t epochCount) noexcept
      : samplesBefore_(wrapping32::multiply(epoch, samples)),
        denominator_(static_cast<double>(epochCount) / 3.0 * static_cast<double>(samples)) {}

  /// @param position zero-based row of the sample.
  [[nodiscard]] double factor(std::int32_t position) const noexcept {
    // NB: the numerator wraps in 32 bits.
    return static_cast<double>(wrapping32::add(samplesBefore_, position)) / denominator_;
  }
  /// The factors of samples that follow each other.
  void fill(std::span<double> factors, std::int32_t firstPosition) const noexcept {
    const std::int32_t first = wrapping32::add(samplesBefore_, firstPosition);
    for (std::size_t i = 0; i < factors.size(); ++i) {
      factors[i] = static_cast<double>(wrapping32::add(first, static_cast<std::int32_t>(i))) / denominator_;
    }
  }

 private:
  std::int32_t samplesBefore_;
  double denominator_;
};

}  // namespace mervane
