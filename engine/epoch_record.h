#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/aligned_doubles.h"
#include "engine/kernel.h"

namespace mervane::engine {

/// What the units have won since the last update of the weights: all that an update needs to know.
class EpochRecord {
 public:
  EpochRecord() = default;
  EpochRecord(std::int32_t units, std::int32_t inputs);

  /// Forgets everything gathered.
  void clear();

  /// Where a kernel gathers; call `keepFarthest` after it.
  [[nodiscard]] Gathering gathering() noexcept;
  /// Copies the samples that became the farthest of their unit in the last call of a kernel.
  void keepFarthest(const Samples& samples);
  /// Records one sample, with the bits a kernel would give.
  void add(std::int32_t winner, double distance, std::span<const double> shown);

  [[nodiscard]] std::int64_t samples() const noexcept { return samples_; }
  [[nodiscard]] const Tally& tally(std::int32_t unit) const { return tallies_[static_cast<std::size_t>(unit)]; }
  /// Sum of the samples that the unit won.
  [[nodiscard]] std::span<const double> sum(std::int32_t unit) const;
  /// The sample farthest from the unit among those it won; not meaningful without hits.
  [[nodiscard]] std::span<const double> farthest(std::int32_t unit) const;
  /// Mean squared distance of all samples from their winners.
  [[nodiscard]] double meanError() const;
  /// Values between two neighbouring rows of sums.
  [[nodiscard]] std::size_t stride() const noexcept { return stride_; }

 private:
  std::int32_t inputs_ = 0;
  std::size_t stride_ = 0;
  std::int64_t samples_ = 0;
  std::vector<Tally> tallies_;
  AlignedDoubles sums_;
  std::vector<double> farthest_;
};

}  // namespace mervane::engine
