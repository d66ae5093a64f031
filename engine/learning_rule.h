#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/aligned_doubles.h"
#include "engine/epoch_record.h"
#include "engine/kernel.h"
#include "engine/neighbourhood_update.h"
#include "engine/relocation.h"
#include "engine/start_axis.h"

namespace mervane::engine {

/// The learning rule of the network, without the port around it. Arguments are not checked here.
///
/// The rule is the batch form of Kohonen's self-organising map (T. Kohonen, "Self-Organizing Maps", 1995), with units
/// in a row:
///
/// 1. While an epoch runs, every sample is given to the unit whose weights are nearest by squared distance, the lowest
///    index among equals. The winner keeps the sum of its samples; the weights stay.
/// 2. When the epoch ends, each unit moves toward the mean of what it and its neighbours won (`NeighbourhoodUpdate`).
///    The pull of neighbours falls off smoothly with their distance in the row, and falls in a straight line with the
///    rate: it is whole at the first rate after a set-up and nothing from half of that on.
/// 3. From then on units that are of little use move to where the error is (`Relocation`). The convex combination has
///    to be over too, and the epoch has to be as long as the one before it, as otherwise the errors of two epochs
///    cannot be compared.
/// 4. Units that all start at one place are first laid out along the main axis of the data (`StartAxis`); the first
///    epoch is spent on finding it.
///
/// An epoch ends when the rate or the radius is set, and before the first winner is asked for. So a caller who asks
/// for the winner after each learned sample gets the classical step: the winner moves by rate * (sample - weights).
///
/// Why not step by step? The rows of a sheet come in their own order, often sorted by what the clusters should find,
/// the same in each epoch. A rule that moves with each sample forgets the first groups while it sees the last; the sum
/// over an epoch does not depend on the order but for rounding. D. DeSieno's conscience (1988) keeps units
/// from staying idle while learning is stepwise; relocation does so here, and also mends what a conscience cannot: two
/// units that share one group while another unit covers two.
///
/// In convex mode (R. Hecht-Nielsen's convex combination method) all weights start at 1 / sqrt(inputs) and a
/// sample x is shown as F x + (1 - F) / sqrt(inputs).
///
/// The same calls give the same bits on every machine: there is no random number, sums have one order, and nothing
/// beyond + - * / and the square root is computed.
class LearningRule {
 public:
  LearningRule() = default;
  /// All weights start at `start`.
  LearningRule(std::int32_t units, std::int32_t inputs, double start, const Kernel& kernel);

  [[nodiscard]] std::int32_t units() const noexcept { return units_; }
  [[nodiscard]] std::int32_t inputs() const noexcept { return inputs_; }
  [[nodiscard]] const Kernel& kernel() const noexcept { return *kernel_; }
  /// 1 / sqrt(inputs).
  [[nodiscard]] double convexCentre() const noexcept { return centre_; }
  /// Row-major, one row a unit.
  [[nodiscard]] std::span<const double> weights() const noexcept { return weights_; }

  /// Sets one weight; call `startLearning` after the last.
  void setWeight(std::int32_t unit, std::int32_t input, double value);
  /// Forgets what was gathered and begins anew from the present weights.
  void startLearning();

  /// Ends the epoch and sets the rate of the next. @param rate 0 to 1.
  void setRate(double rate);
  /// Ends the epoch and sets the radius of the next. @param radius 0 or more.
  void setRadius(std::int32_t radius);
  /// Brings everything gathered into the weights and ends a trial that has not paid yet.
  void finish();

  /// Gathers samples in order. @param factors one for each sample, 0 to 1, some of them below 1; or empty
  ///     where all are 1.
  void learn(std::span<const double> samples, std::size_t count, std::span<const double> factors);
  /// Gathers one sample whose winner is known. @param shown the sample after the convex combination.
  void learn(std::span<const double> sample, double factor, std::span<const double> shown, std::int32_t winner,
             double distance);
  /// Winner of each sample, taken as it is. @return the squared distance of the last winner.
  double search(std::span<const double> samples, std::span<std::int32_t> winners) const;

 private:
  void endEpoch(bool wholePass);
  void layOut();
  void fillLanes();

  const Kernel* kernel_ = nullptr;
  std::int32_t units_ = 0;
  std::int32_t inputs_ = 0;
  double centre_ = 1.0;
  double rate_ = 0.0;
  double firstRate_ = 0.0;  ///< The highest rate since the set-up.
  std::int32_t radius_ = 0;
  bool glued_ = false;         ///< All units are at one place.
  bool contracted_ = false;    ///< A sample of this epoch had a convex factor below 1.
  double latestFactor_ = 1.0;  ///< Of the sample gathered last.
  std::vector<double> weights_;
  AlignedDoubles lanes_;
  mutable AlignedDoubles scratch_;
  EpochRecord record_;
  StartAxis axis_;
  std::int64_t looked_ = 0;      ///< Samples that `axis_` has seen.
  std::int64_t lastLength_ = 0;  ///< Samples of the epoch before.
  NeighbourhoodUpdate update_;
  Relocation relocation_;
};

}  // namespace mervane::engine
