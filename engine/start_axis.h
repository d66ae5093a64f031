#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace mervane::engine {

/// Follows the mean and the main direction of a stream of samples in one pass.
///
/// Units that start at one and the same place would all answer alike for ever. Where that is so, the first epoch
/// is spent on looking at the data, and the units are then laid out along its longest axis, which is Kohonen's
/// linear initialisation. The direction is found by the covariance-free incremental rule of J. Weng, Y. Zhang and
/// W.-S. Hwang (2003), first component only.
class StartAxis {
 public:
  StartAxis() = default;
  explicit StartAxis(std::int32_t inputs);

  void add(std::span<const double> sample);
  /// The place of the unit number `unit` out of `units`: evenly spaced from one deviation below the mean to one above.
  void place(std::int32_t unit, std::int32_t units, std::span<double> result) const;

 private:
  std::int64_t samples_ = 0;
  std::vector<double> mean_;
  std::vector<double> gap_;
  std::vector<double> axis_;  ///< Its length is the variance along it.
};

}  // namespace mervane::engine
