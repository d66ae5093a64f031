#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/epoch_record.h"

namespace mervane::engine {

/// Moves units to where they are of more use: the part of a conscience that is left to do in batch learning.
///
/// A unit without samples goes to the farthest sample of the unit with the largest error. Once the map has settled,
/// the unit that would be missed least is put beside the one with the largest error, on trial: when the mean error
/// is not below the settled one after a few epochs, the weights go back to where they were and the next pair has its
/// turn. The idea is LBG-U of B. Fritzke (1997), with Ward's merging cost in the place of the utility.
class Relocation {
 public:
  Relocation() = default;
  Relocation(std::int32_t units, std::int32_t inputs);

  /// One epoch has ended.
  /// @param record what it gathered; its errors belong to the weights before the update.
  /// @param weights after the update; moved units are written here.
  void epochEnded(const EpochRecord& record, std::span<double> weights);
  /// Ends a trial that is still open: the weights go back.
  void settle(std::span<double> weights);

 private:
  /// What is known of one unit at the time the map had settled.
  struct Unit {
    double error = 0.0;
    double hits = 0.0;
    double missed = 0.0;  ///< How much the error would grow without it.
  };

  bool moveIdleUnits(const EpochRecord& record, std::span<double> weights);
  void judgeTrial(const EpochRecord& record, std::span<double> weights);
  void remember(const EpochRecord& record, std::span<const double> weights);
  void startTrial(std::span<double> weights);
  void reckonMissed();
  [[nodiscard]] std::span<const double> settledWeights(std::int32_t unit) const;

  std::int32_t units_ = 0;
  std::int32_t inputs_ = 0;
  double lastError_ = -1.0;       ///< Mean error of the epoch before; negative while there is none.
  double settledError_ = 0.0;     ///< To be beaten by a trial.
  std::int32_t trialEpochs_ = 0;  ///< Age of the open trial; 0 for none.
  std::vector<double> settledWeights_;
  std::vector<double> settledFarthest_;
  std::vector<Unit> settled_;
  std::vector<char> tried_;  ///< Pairs (moved unit, unit it went to) that failed since the last success.
  std::vector<double> spare_;
};

}  // namespace mervane::engine
