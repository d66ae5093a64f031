#include "engine/neighbourhood_update.h"

#include <algorithm>
#include <cmath>

namespace mervane::engine {

namespace {

/// base to a whole power, by products alone: the library's pow differs between machines in the last bit.
double wholePower(double base, std::int64_t exponent) {
  double result = 1.0;
  for (; exponent > 0; exponent >>= 1) {
    if ((exponent & 1) != 0) result *= base;
    base *= base;
  }
  return result;
}

double shareOfWay(double rate, double samples) {
  if (samples < 1.0) return rate * samples;
  return 1.0 - wholePower(1.0 - rate, static_cast<std::int64_t>(std::floor(samples)));
}

}  // namespace

void NeighbourhoodUpdate::apply(const EpochRecord& record, const Neighbourhood& neighbourhood, double rate,
                                std::int32_t units, std::int32_t inputs, std::span<double> weights) {
  const std::int32_t radius = neighbourhood.strength > 0.0 ? std::min(neighbourhood.radius, units - 1) : 0;
  pull_.resize(static_cast<std::size_t>(radius) + 1);
  for (std::int32_t t = 0; t <= radius; ++t) {
    const double part = t / (static_cast<double>(radius) + 1.0);
    const double bell = (1.0 - part * part) * (1.0 - part * part);
    pull_[static_cast<std::size_t>(t)] = t == 0 ? 1.0 : neighbourhood.strength * bell;
  }
  const auto columns = static_cast<std::size_t>(inputs);
  for (std::int32_t unit = 0; unit < units; ++unit) {
    double samples = 0.0;
    mean_.assign(columns, 0.0);
    for (std::int32_t other = std::max(0, unit - radius); other <= std::min(units - 1, unit + radius); ++other) {
      if (record.tally(other).hits == 0) continue;
      const double pull = pull_[static_cast<std::size_t>(other < unit ? unit - other : other - unit)];
      const std::span<const double> sum = record.sum(other);
      samples += pull * static_cast<double>(record.tally(other).hits);
      for (std::size_t j = 0; j < columns; ++j) mean_[j] += pull * sum[j];
    }
    if (!(samples > 0.0)) continue;
    const double share = shareOfWay(rate, samples);
    double* weight = weights.data() + static_cast<std::size_t>(unit) * columns;
    for (std::size_t j = 0; j < columns; ++j) weight[j] += share * (mean_[j] / samples - weight[j]);
  }
}

}  // namespace mervane::engine
