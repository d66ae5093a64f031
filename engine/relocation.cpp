#include "engine/relocation.h"

#include <algorithm>

namespace mervane::engine {

namespace {

/// The map has settled when an epoch lowers the mean error by less than this part of it.
constexpr double settledGain = 0.01;
/// Epochs a trial is given, its first one included.
constexpr std::int32_t trialLength = 5;
/// A trial has to be better than rounding.
constexpr double realGain = 1e-9;
/// The part of a unit's error that a second unit beside it may be hoped to save.
constexpr double hopedSaving = 0.5;
/// The search for a pair is quadratic; it is left out for maps larger than this.
constexpr std::int32_t mostUnits = 1024;

double squaredDistance(std::span<const double> a, std::span<const double> b) {
  double sum = 0.0;
  for (std::size_t j = 0; j < a.size(); ++j) sum += (a[j] - b[j]) * (a[j] - b[j]);
  return sum;
}

std::span<double> row(std::span<double> weights, std::int32_t unit, std::int32_t inputs) {
  return weights.subspan(static_cast<std::size_t>(unit) * static_cast<std::size_t>(inputs),
                         static_cast<std::size_t>(inputs));
}

}  // namespace

Relocation::Relocation(std::int32_t units, std::int32_t inputs) : units_(units), inputs_(inputs) {}

void Relocation::epochEnded(const EpochRecord& record, std::span<double> weights) {
  if (units_ < 2) return;
  const double error = record.meanError();
  if (moveIdleUnits(record, weights)) {
    if (trialEpochs_ > 0) ++trialEpochs_;
  } else if (units_ > mostUnits) {
    return;
  } else if (trialEpochs_ > 0) {
    judgeTrial(record, weights);
    return;
  } else if (lastError_ > 0.0 && error >= lastError_ * (1.0 - settledGain)) {
    remember(record, weights);
    startTrial(weights);
  }
  lastError_ = error;
}

void Relocation::settle(std::span<double> weights) {
  if (trialEpochs_ > 0) std::copy(settledWeights_.begin(), settledWeights_.end(), weights.begin());
  trialEpochs_ = 0;
}

bool Relocation::moveIdleUnits(const EpochRecord& record, std::span<double> weights) {
  bool moved = false;
  for (std::int32_t unit = 0; unit < units_; ++unit) {
    if (record.tally(unit).hits > 0) continue;
    if (!moved) {
      spare_.resize(static_cast<std::size_t>(units_));
      for (std::int32_t other = 0; other < units_; ++other)
        spare_[static_cast<std::size_t>(other)] = record.tally(other).farthest > 0.0 ? record.tally(other).error : 0.0;
    }
    const auto worst = std::max_element(spare_.begin(), spare_.end());
    if (!(*worst > 0.0)) break;  // Every sample has a unit at its very place.
    const std::span<const double> goal = record.farthest(static_cast<std::int32_t>(worst - spare_.begin()));
    std::copy(goal.begin(), goal.end(), row(weights, unit, inputs_).begin());
    *worst = 0.0;
    moved = true;
  }
  return moved;
}

void Relocation::judgeTrial(const EpochRecord& record, std::span<double> weights) {
  ++trialEpochs_;
  const double error = record.meanError();
  if (error < settledError_ * (1.0 - realGain)) {
    trialEpochs_ = 0;
    std::fill(tried_.begin(), tried_.end(), char{0});
    lastError_ = error;
  } else if (trialEpochs_ > trialLength) {
    settle(weights);
    startTrial(weights);
  }
}

void Relocation::remember(const EpochRecord& record, std::span<const double> weights) {
  const auto units = static_cast<std::size_t>(units_);
  if (tried_.empty()) tried_.resize(units * units);
  settledError_ = record.meanError();
  settledWeights_.assign(weights.begin(), weights.end());
  settledFarthest_.clear();
  settled_.clear();
  for (std::int32_t unit = 0; unit < units_; ++unit) {
    const std::span<const double> farthest = record.farthest(unit);
    settledFarthest_.insert(settledFarthest_.end(), farthest.begin(), farthest.end());
    settled_.push_back({record.tally(unit).error, static_cast<double>(record.tally(unit).hits), 0.0});
  }
  reckonMissed();
}

void Relocation::reckonMissed() {
  for (std::int32_t unit = 0; unit < units_; ++unit) {
    Unit& one = settled_[static_cast<std::size_t>(unit)];
    bool first = true;
    for (std::int32_t other = 0; other < units_; ++other) {
      const double hits = settled_[static_cast<std::size_t>(other)].hits;
      if (other == unit || !(one.hits + hits > 0.0)) continue;
      const double cost =
          one.hits * hits / (one.hits + hits) * squaredDistance(settledWeights(unit), settledWeights(other));
      one.missed = first ? cost : std::min(one.missed, cost);
      first = false;
    }
  }
}

void Relocation::startTrial(std::span<double> weights) {
  std::int32_t moved = -1;
  std::int32_t goal = -1;
  double best = 0.0;
  for (std::int32_t unit = 0; unit < units_; ++unit) {
    for (std::int32_t other = 0; other < units_; ++other) {
      const Unit& place = settled_[static_cast<std::size_t>(other)];
      const std::size_t pair =
          static_cast<std::size_t>(unit) * static_cast<std::size_t>(units_) + static_cast<std::size_t>(other);
      if (other == unit || tried_[pair] != 0 || place.hits < 2.0) continue;
      const double gain = hopedSaving * place.error - settled_[static_cast<std::size_t>(unit)].missed;
      if (moved >= 0 && !(gain > best)) continue;
      best = gain;
      moved = unit;
      goal = other;
    }
  }
  if (moved < 0) return;  // Everything has been tried.
  tried_[static_cast<std::size_t>(moved) * static_cast<std::size_t>(units_) + static_cast<std::size_t>(goal)] = 1;
  const std::span<const double> centre = settledWeights(goal);
  const std::size_t start = static_cast<std::size_t>(goal) * centre.size();
  const std::span<double> weight = row(weights, moved, inputs_);
  for (std::size_t j = 0; j < weight.size(); ++j)
    weight[j] = centre[j] + 0.5 * (settledFarthest_[start + j] - centre[j]);
  trialEpochs_ = 1;
}

std::span<const double> Relocation::settledWeights(std::int32_t unit) const {
  const auto inputs = static_cast<std::size_t>(inputs_);
  return {settledWeights_.data() + static_cast<std::size_t>(unit) * inputs, inputs};
}

}  // namespace mervane::engine
