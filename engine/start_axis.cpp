#include "engine/start_axis.h"

#include <cmath>

namespace mervane::engine {

namespace {

double product(const std::vector<double>& a, const std::vector<double>& b) {
  double sum = 0.0;
  for (std::size_t j = 0; j < a.size(); ++j) sum += a[j] * b[j];
  return sum;
}

}  // namespace

StartAxis::StartAxis(std::int32_t inputs)
    : mean_(static_cast<std::size_t>(inputs)), gap_(mean_.size()), axis_(mean_.size()) {}

void StartAxis::add(std::span<const double> sample) {
  samples_ += 1;
  const double share = 1.0 / static_cast<double>(samples_);
  for (std::size_t j = 0; j < mean_.size(); ++j) {
    mean_[j] += share * (sample[j] - mean_[j]);
    gap_[j] = sample[j] - mean_[j];
  }
  const double length = std::sqrt(product(axis_, axis_));
  if (!(length > 0.0)) {
    axis_ = gap_;
    return;
  }
  const double along = product(gap_, axis_) / length;
  for (std::size_t j = 0; j < axis_.size(); ++j) axis_[j] += share * (along * gap_[j] - axis_[j]);
}

void StartAxis::place(std::int32_t unit, std::int32_t units, std::span<double> result) const {
  const double length = std::sqrt(product(axis_, axis_));
  const double position = units > 1 ? 2.0 * unit / (units - 1) - 1.0 : 0.0;
  const double reach = length > 0.0 ? position / std::sqrt(length) : 0.0;  // Deviation over length.
  for (std::size_t j = 0; j < result.size(); ++j) result[j] = mean_[j] + reach * axis_[j];
}

}  // namespace mervane::engine
