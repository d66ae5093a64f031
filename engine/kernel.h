#pragma once

#include <cstddef>
#include <cstdint>

/// The innermost loops of the network and what they work on.
///
/// Translation units of kernels are compiled for processors that the machine may not have. They include nothing
/// but this header and their own, because an inline function of a library that the linker picks from such a unit
/// would run everywhere. Hence the raw pointers.
namespace mervane::engine {

/// Weights in the order the search walks them: [block of units][input][lane], one unit a lane.
///
/// The last block is filled up with units whose weights are infinite, so that they never win.
struct LaneWeights {
  const double* values;
  std::int32_t units;
  std::int32_t inputs;
  std::int32_t blocks;
};

/// What one unit has won since the last update of the weights.
struct Tally {
  double error;                 ///< Sum of the squared distances of its samples.
  double farthest;              ///< The largest of them; negative while there is none.
  std::int64_t hits;            ///< How many samples it won.
  std::int64_t farthestSample;  ///< Position in the present call of the sample `farthest` belongs to; -1 for none.
};

/// Where a kernel leaves what it gathers.
struct Gathering {
  Tally* tallies;      ///< One for each unit.
  double* sums;        ///< Sum of the samples each unit won, one row of `stride` for each unit.
  std::size_t stride;  ///< Row length: the input count rounded up to a multiple of 8; the rest of a row stays 0.
};

/// Samples of one call.
struct Samples {
  const double* values;   ///< Row-major.
  const double* factors;  ///< One convex factor for each sample, at most 1; null for samples taken as they are.
  double centre;          ///< The value that the convex combination starts from.
  std::size_t count;
};

/// What a block of convex factors holds.
struct FactorKinds {
  bool contracting;  ///< Some are below 1.
  bool notNumbers;   ///< Some are not a number.
};

/// How many values callers check and hand over at a time, and how far ahead of the present sample kernels have memory
/// fetched: the next portion is near when it is checked.
inline constexpr std::size_t portion = 1024;

/// Values have to stay below this in size, about 1.8e72: the search for the main axis needs their fourth powers.
inline constexpr double valueLimit = 0x1p240;

/// One implementation for one kind of processor. All of them give the same bits: the squared distance of a unit is
/// summed in the order of the inputs, products and sums are rounded apart, and the winner is the lowest index
/// among the nearest units.
struct Kernel {
  const char* name;
  std::int32_t lanes;
  /// Finds the winner of each sample and gathers it there. The weights do not change.
  /// @param scratch `stride` + units rounded up to 8, zero at the start; its content does not outlive a call.
  void (*gather)(const LaneWeights& weights, const Samples& samples, const Gathering& gathering, double* scratch);
  /// Finds the winner of each sample, which is taken as it is, and its squared distance.
  void (*search)(const LaneWeights& weights, const double* samples, std::size_t count, std::int32_t* winners,
                 double* distance, double* scratch);
  /// True where all values are finite and below `valueLimit` in size.
  bool (*usable)(const double* values, std::size_t count);
  /// Writes each factor as the network takes it: above 1 it counts as 1, below 0 as 0.
  FactorKinds (*takeFactors)(const double* given, std::size_t count, double* effective);
};

}  // namespace mervane::engine
