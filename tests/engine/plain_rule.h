#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace mervane::tests {

/// The learning rule of the network as the headers of the engine describe it, in loops that anybody would write: one
/// sample at a time, one vector a unit, no blocks, no lanes, nothing left out because it cannot matter. Sums are taken
/// in the order of their parts, so the network has to give the very same bits.
class PlainRule {
 public:
  using Place = std::vector<double>;

  PlainRule(std::size_t inputs, std::vector<Place> start)
      : weights(std::move(start)), inputs_(inputs), centre_(1.0 / std::sqrt(static_cast<double>(inputs))) {
    alike_ = weights.size() > 1;
    for (const Place& one : weights) alike_ = alike_ && one == weights[0];
    won_.resize(weights.size());
    mean_ = gap_ = axis_ = Place(inputs, 0.0);
  }

  std::vector<Place> weights;

  void setRate(double rate) {
    endEpoch(true);
    rate_ = rate;
    firstRate_ = std::max(firstRate_, rate);
  }
  void setRadius(int radius) {
    endEpoch(false);
    radius_ = radius;
  }
  void learn(const Place& sample, double givenFactor) {
    if (rate_ == 0.0) return;
    const double factor = std::clamp(givenFactor, 0.0, 1.0);
    contracted_ = contracted_ || factor < 1.0;
    latestFactor_ = factor;
    samples_ += 1;
    if (alike_) {
      lookAt(sample);
      return;
    }
    const Place shown = combined(sample, factor);
    Won& won = won_[winner(shown)];
    const double distance = squared(shown, weights[winner(shown)]);
    won.error += distance;
    won.hits += 1.0;
    if (distance > won.farthestDistance) {
      won.farthestDistance = distance;
      won.farthest = shown;
    }
    won.sum.resize(inputs_);
    for (std::size_t j = 0; j < inputs_; ++j) won.sum[j] += shown[j];
  }
  void finish() {
    endEpoch(false);
    settle();
  }
  [[nodiscard]] std::size_t winner(const Place& shown) const {
    std::size_t best = 0;
    for (std::size_t unit = 1; unit < weights.size(); ++unit)
      if (squared(shown, weights[unit]) < squared(shown, weights[best])) best = unit;
    return best;
  }

 private:
  /// What one unit has won in this epoch.
  struct Won {
    double error = 0.0;
    double hits = 0.0;
    double farthestDistance = -1.0;
    Place farthest;
    Place sum;
  };

  static double squared(const Place& a, const Place& b) {
    double sum = 0.0;
    for (std::size_t j = 0; j < a.size(); ++j) sum += (a[j] - b[j]) * (a[j] - b[j]);
    return sum;
  }
  static double product(const Place& a, const Place& b) {
    double sum = 0.0;
    for (std::size_t j = 0; j < a.size(); ++j) sum += a[j] * b[j];
    return sum;
  }
  [[nodiscard]] Place combined(const Place& sample, double factor) const {
    Place result = sample;
    if (factor != 1.0)
      for (double& value : result) value = factor * value + (1.0 - factor) * centre_;
    return result;
  }

  /// The first epoch of units that start alike is spent on the mean and the main axis of the samples.
  void lookAt(const Place& sample) {
    const double share = 1.0 / samples_;
    for (std::size_t j = 0; j < inputs_; ++j) {
      mean_[j] += share * (sample[j] - mean_[j]);
      gap_[j] = sample[j] - mean_[j];
    }
    const double length = std::sqrt(product(axis_, axis_));
    if (length == 0.0) {
      axis_ = gap_;
      return;
    }
    const double along = product(gap_, axis_) / length;
    for (std::size_t j = 0; j < inputs_; ++j) axis_[j] += share * (along * gap_[j] - axis_[j]);
  }
  void layOut() {
    const double length = std::sqrt(product(axis_, axis_));
    for (std::size_t unit = 0; unit < weights.size(); ++unit) {
      const double position = 2.0 * static_cast<double>(unit) / static_cast<double>(weights.size() - 1) - 1.0;
      Place place = mean_;
      if (length > 0.0)
        for (std::size_t j = 0; j < inputs_; ++j) place[j] = mean_[j] + position / std::sqrt(length) * axis_[j];
      weights[unit] = combined(place, latestFactor_);
    }
    alike_ = false;
  }

  void endEpoch(bool wholePass) {
    if (samples_ > 0.0) {
      if (alike_) {
        layOut();
      } else {
        const double strength = std::clamp((rate_ / firstRate_ - 0.5) / 0.5, 0.0, 1.0);
        move(strength);
        const bool alone = radius_ == 0 || strength == 0.0;
        if (alone && wholePass && !contracted_ && samples_ == lastLength_ && weights.size() > 1) relocate();
      }
      lastLength_ = samples_;
      samples_ = 0.0;
      won_.assign(weights.size(), Won());
    }
    contracted_ = false;
  }

  /// Each unit covers a share of the way to the mean of what it and its neighbours won.
  void move(double strength) {
    const int last = static_cast<int>(weights.size()) - 1;
    const int reach = strength > 0.0 ? std::min(radius_, last) : 0;
    for (int unit = 0; unit <= last; ++unit) {
      double hits = 0.0;
      Place sum(inputs_, 0.0);
      for (int other = 0; other <= last; ++other) {
        const Won& won = won_[static_cast<std::size_t>(other)];
        const int steps = std::abs(unit - other);
        if (steps > reach || won.hits == 0.0) continue;
        const double part = steps / (reach + 1.0);
        const double pull = steps == 0 ? 1.0 : strength * ((1.0 - part * part) * (1.0 - part * part));
        hits += pull * won.hits;
        for (std::size_t j = 0; j < inputs_; ++j) sum[j] += pull * won.sum[j];
      }
      if (hits == 0.0) continue;
      Place& weight = weights[static_cast<std::size_t>(unit)];
      for (std::size_t j = 0; j < inputs_; ++j) weight[j] += share(hits) * (sum[j] / hits - weight[j]);
    }
  }
  [[nodiscard]] double share(double hits) const {
    if (hits < 1.0) return rate_ * hits;
    double rest = 1.0;
    double power = 1.0 - rate_;
    for (auto n = static_cast<std::int64_t>(hits); n > 0; n /= 2) {
      if (n % 2 == 1) rest *= power;
      power *= power;
    }
    return 1.0 - rest;
  }

  [[nodiscard]] double meanError() const {
    double sum = 0.0;
    for (const Won& won : won_) sum += won.error;
    return sum / samples_;
  }
  /// Units of little use go to where the error is.
  void relocate() {
    const double error = meanError();
    if (moveIdle()) {
      if (trialEpochs_ > 0) ++trialEpochs_;
    } else if (trialEpochs_ > 0) {
      ++trialEpochs_;
      if (error < settledError_ * (1.0 - 1e-9)) {
        trialEpochs_ = 0;
        tried_.clear();
        lastError_ = error;
      } else if (trialEpochs_ > 5) {
        settle();
        tryNext();
      }
      return;
    } else if (lastError_ > 0.0 && error >= lastError_ * (1.0 - 0.01)) {
      settledError_ = error;
      settledWeights_ = weights;
      settled_ = won_;
      tryNext();
    }
    lastError_ = error;
  }
  bool moveIdle() {
    std::vector<double> errors;
    for (const Won& won : won_) errors.push_back(won.farthestDistance > 0.0 ? won.error : 0.0);
    bool moved = false;
    for (std::size_t unit = 0; unit < weights.size(); ++unit) {
      if (won_[unit].hits > 0.0) continue;
      const auto worst = static_cast<std::size_t>(std::ranges::max_element(errors) - errors.begin());
      if (errors[worst] == 0.0) break;
      weights[unit] = won_[worst].farthest;
      errors[worst] = 0.0;
      moved = true;
    }
    return moved;
  }
  void settle() {
    if (trialEpochs_ > 0) weights = settledWeights_;
    trialEpochs_ = 0;
  }
  [[nodiscard]] double missed(std::size_t unit) const {
    double least = -1.0;
    for (std::size_t other = 0; other < weights.size(); ++other) {
      const double both = settled_[unit].hits + settled_[other].hits;
      if (other == unit || both == 0.0) continue;
      const double cost =
          settled_[unit].hits * settled_[other].hits / both * squared(settledWeights_[unit], settledWeights_[other]);
      if (least < 0.0 || cost < least) least = cost;
    }
    return std::max(least, 0.0);
  }
  void tryNext() {
    std::pair<std::size_t, std::size_t> best{0, 0};
    double bestGain = 0.0;
    for (std::size_t unit = 0; unit < weights.size(); ++unit) {
      for (std::size_t other = 0; other < weights.size(); ++other) {
        if (unit == other || settled_[other].hits < 2.0) continue;
        if (std::ranges::count(tried_, std::pair(unit, other)) > 0) continue;
        const double gain = 0.5 * settled_[other].error - missed(unit);
        if (best.first != best.second && gain <= bestGain) continue;
        best = {unit, other};
        bestGain = gain;
      }
    }
    if (best.first == best.second) return;
    tried_.push_back(best);
    const Place& centre = settledWeights_[best.second];
    const Place& farthest = settled_[best.second].farthest;
    for (std::size_t j = 0; j < inputs_; ++j) weights[best.first][j] = centre[j] + 0.5 * (farthest[j] - centre[j]);
    trialEpochs_ = 1;
  }

  std::size_t inputs_;
  double centre_;
  double rate_ = 0.0;
  double firstRate_ = 0.0;
  int radius_ = 0;
  bool alike_ = false;
  bool contracted_ = false;
  double latestFactor_ = 1.0;
  double samples_ = 0.0;  ///< of this epoch
  double lastLength_ = 0.0;
  std::vector<Won> won_;
  Place mean_, gap_, axis_;
  double lastError_ = -1.0;
  double settledError_ = 0.0;
  int trialEpochs_ = 0;
  std::vector<Place> settledWeights_;
  std::vector<Won> settled_;
  std::vector<std::pair<std::size_t, std::size_t>> tried_;
};

}  // namespace mervane::tests
