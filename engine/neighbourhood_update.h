#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/epoch_record.h"

namespace mervane::engine {

/// How far the units pull each other in one update.
struct Neighbourhood {
  std::int32_t radius;  ///< In steps of the unit index; 0 for the winner alone.
  double strength;      ///< 0 to 1: the pull of a neighbour as against the winner's own.
};

/// Moves the weights toward the samples that were gathered: the batch form of Kohonen's rule.
///
/// A unit moves toward the mean of the samples that it and its neighbours won, a neighbour t steps away counting
/// strength * (1 - (t / (radius + 1))^2)^2. With n such samples and the rate r it covers the share 1 - (1 - r)^n of
/// the way, which is where n single steps of the rate r toward that mean would lead.
class NeighbourhoodUpdate {
 public:
  /// @param weights row-major, one row a unit.
  void apply(const EpochRecord& record, const Neighbourhood& neighbourhood, double rate, std::int32_t units,
             std::int32_t inputs, std::span<double> weights);

 private:
  std::vector<double> pull_;
  std::vector<double> mean_;
};

}  // namespace mervane::engine
