#include "engine/epoch_record.h"

#include <algorithm>

#include "engine/convex_combination.h"

namespace mervane::engine {

namespace {

constexpr Tally nothing{0.0, -1.0, 0, -1};

std::size_t roundedUp(std::int32_t inputs) {
  return (static_cast<std::size_t>(inputs) + 7) / 8 * 8;
}

}  // namespace

EpochRecord::EpochRecord(std::int32_t units, std::int32_t inputs)
    : inputs_(inputs),
      stride_(roundedUp(inputs)),
      tallies_(static_cast<std::size_t>(units), nothing),
      sums_(static_cast<std::size_t>(units) * stride_),
      farthest_(static_cast<std::size_t>(units) * static_cast<std::size_t>(inputs)) {}

void EpochRecord::clear() {
  samples_ = 0;
  std::fill(tallies_.begin(), tallies_.end(), nothing);
  std::fill(sums_.begin(), sums_.end(), 0.0);
}

Gathering EpochRecord::gathering() noexcept {
  return {tallies_.data(), sums_.data(), stride_};
}

void EpochRecord::keepFarthest(const Samples& samples) {
  const auto inputs = static_cast<std::size_t>(inputs_);
  double* kept = farthest_.data();
  for (Tally& tally : tallies_) {
    if (tally.farthestSample >= 0) {
      const auto position = static_cast<std::size_t>(tally.farthestSample);
      const std::span<const double> sample{samples.values + position * inputs, inputs};
      const double factor = samples.factors == nullptr ? 1.0 : samples.factors[position];
      combineConvex(sample, factor, samples.centre, {kept, inputs});
      tally.farthestSample = -1;
    }
    kept += inputs;
  }
  samples_ += static_cast<std::int64_t>(samples.count);
}

void EpochRecord::add(std::int32_t winner, double distance, std::span<const double> shown) {
  const auto unit = static_cast<std::size_t>(winner);
  Tally& tally = tallies_[unit];
  tally.error += distance;
  tally.hits += 1;
  if (distance > tally.farthest) {
    tally.farthest = distance;
    std::copy(shown.begin(), shown.end(), farthest_.begin() + static_cast<std::ptrdiff_t>(unit * shown.size()));
  }
  double* sum = sums_.data() + unit * stride_;
  for (std::size_t j = 0; j < shown.size(); ++j) sum[j] += shown[j];
  samples_ += 1;
}

std::span<const double> EpochRecord::sum(std::int32_t unit) const {
  return {sums_.data() + static_cast<std::size_t>(unit) * stride_, static_cast<std::size_t>(inputs_)};
}

std::span<const double> EpochRecord::farthest(std::int32_t unit) const {
  const auto inputs = static_cast<std::size_t>(inputs_);
  return {farthest_.data() + static_cast<std::size_t>(unit) * inputs, inputs};
}

double EpochRecord::meanError() const {
  double sum = 0.0;
  for (const Tally& tally : tallies_) sum += tally.error;
  return samples_ == 0 ? 0.0 : sum / static_cast<double>(samples_);
}

}  // namespace mervane::engine
