#include "engine/learning_rule.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/convex_combination.h"

namespace mervane::engine {

namespace {

/// Neighbours stop pulling when the rate has fallen to this part of the first one.
constexpr double neighboursUntil = 0.5;

std::size_t blocksOf(std::int32_t units, const Kernel& kernel) {
  return (static_cast<std::size_t>(units) + static_cast<std::size_t>(kernel.lanes) - 1) /
         static_cast<std::size_t>(kernel.lanes);
}

}  // namespace

LearningRule::LearningRule(std::int32_t units, std::int32_t inputs, double start, const Kernel& kernel)
    : kernel_(&kernel),
      units_(units),
      inputs_(inputs),
      centre_(1.0 / std::sqrt(static_cast<double>(inputs))),
      weights_(static_cast<std::size_t>(units) * static_cast<std::size_t>(inputs), start),
      lanes_(blocksOf(units, kernel) * static_cast<std::size_t>(kernel.lanes) * static_cast<std::size_t>(inputs),
             std::numeric_limits<double>::infinity()),
      record_(units, inputs) {
  scratch_.resize(record_.stride() + blocksOf(units, kernel) * static_cast<std::size_t>(kernel.lanes));
  startLearning();
}

void LearningRule::setWeight(std::int32_t unit, std::int32_t input, double value) {
  weights_[static_cast<std::size_t>(unit) * static_cast<std::size_t>(inputs_) + static_cast<std::size_t>(input)] =
      value;
}

void LearningRule::startLearning() {
  record_.clear();
  axis_ = StartAxis(inputs_);
  looked_ = 0;
  relocation_ = Relocation(units_, inputs_);
  firstRate_ = rate_;
  lastLength_ = 0;
  contracted_ = false;
  const auto inputs = static_cast<std::ptrdiff_t>(inputs_);
  // Each row equals the one before it exactly where the units are all alike.
  glued_ = units_ > 1 && std::equal(weights_.begin() + inputs, weights_.end(), weights_.begin());
  fillLanes();
}

void LearningRule::setRate(double rate) {
  endEpoch(true);
  rate_ = rate;
  firstRate_ = std::max(firstRate_, rate);
}

void LearningRule::setRadius(std::int32_t radius) {
  endEpoch(false);
  radius_ = radius;
}

void LearningRule::finish() {
  endEpoch(false);
  relocation_.settle(weights_);
  fillLanes();
}

void LearningRule::learn(std::span<const double> samples, std::size_t count, std::span<const double> factors) {
  if (rate_ == 0.0 || count == 0) return;  // OPTIMIZATION: no weight can change.
  contracted_ = contracted_ || !factors.empty();
  latestFactor_ = factors.empty() ? 1.0 : factors.back();
  const auto inputs = static_cast<std::size_t>(inputs_);
  if (glued_) {
    for (std::size_t i = 0; i < count; ++i) axis_.add(samples.subspan(i * inputs, inputs));
    looked_ += static_cast<std::int64_t>(count);
    return;
  }
  const LaneWeights weights{lanes_.data(), units_, inputs_, static_cast<std::int32_t>(blocksOf(units_, *kernel_))};
  const Samples shown{samples.data(), factors.empty() ? nullptr : factors.data(), centre_, count};
  kernel_->gather(weights, shown, record_.gathering(), scratch_.data());
  record_.keepFarthest(shown);
}

void LearningRule::learn(std::span<const double> sample, double factor, std::span<const double> shown,
                         std::int32_t winner, double distance) {
  if (rate_ == 0.0) return;
  contracted_ = contracted_ || factor < 1.0;
  latestFactor_ = factor;
  if (glued_) {
    axis_.add(sample);
    looked_ += 1;
    return;
  }
  record_.add(winner, distance, shown);
}

double LearningRule::search(std::span<const double> samples, std::span<std::int32_t> winners) const {
  const LaneWeights weights{lanes_.data(), units_, inputs_, static_cast<std::int32_t>(blocksOf(units_, *kernel_))};
  double distance = 0.0;
  kernel_->search(weights, samples.data(), winners.size(), winners.data(), &distance, scratch_.data());
  return distance;
}

void LearningRule::endEpoch(bool wholePass) {
  if (looked_ > 0) {
    layOut();
  } else if (record_.samples() > 0) {
    const double part = rate_ / firstRate_;
    const double strength = std::clamp((part - neighboursUntil) / (1.0 - neighboursUntil), 0.0, 1.0);
    const bool alone = radius_ == 0 || !(strength > 0.0);
    update_.apply(record_, {radius_, strength}, rate_, units_, inputs_, weights_);
    const bool comparable = wholePass && !contracted_ && record_.samples() == lastLength_;
    if (alone && comparable) relocation_.epochEnded(record_, weights_);
    lastLength_ = record_.samples();
    record_.clear();
    fillLanes();
  }
  contracted_ = false;
}

void LearningRule::layOut() {
  const auto inputs = static_cast<std::size_t>(inputs_);
  for (std::int32_t unit = 0; unit < units_; ++unit) {
    const std::span<double> weight = std::span(weights_).subspan(static_cast<std::size_t>(unit) * inputs, inputs);
    axis_.place(unit, units_, weight);
    combineConvex(weight, latestFactor_, centre_, weight);
  }
  glued_ = false;
  lastLength_ = looked_;
  looked_ = 0;
  fillLanes();
}

void LearningRule::fillLanes() {
  const auto lanes = static_cast<std::size_t>(kernel_->lanes);
  const auto inputs = static_cast<std::size_t>(inputs_);
  for (std::size_t unit = 0; unit < static_cast<std::size_t>(units_); ++unit) {
    double* lane = lanes_.data() + unit / lanes * lanes * inputs + unit % lanes;
    const double* weight = weights_.data() + unit * inputs;
    for (std::size_t j = 0; j < inputs; ++j) lane[j * lanes] = weight[j];
  }
}

}  // namespace mervane::engine
