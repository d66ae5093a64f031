#include "bench/plain_loops.h"

#include "engine/kernels.h"

namespace mervane {

namespace {

using engine::Gathering;
using engine::LaneWeights;
using engine::Samples;
using engine::Tally;

std::int32_t nearestUnit(const LaneWeights& weights, const double* sample, double& distance) {
  std::int32_t winner = 0;
  for (std::int32_t unit = 0; unit < weights.units; ++unit) {
    const double* weight = weights.values + std::ptrdiff_t{unit} * weights.inputs;
    double sum = 0.0;
    for (std::int32_t j = 0; j < weights.inputs; ++j) sum += (sample[j] - weight[j]) * (sample[j] - weight[j]);
    if (unit == 0 || sum < distance) {
      distance = sum;
      winner = unit;
    }
  }
  return winner;
}

void gather(const LaneWeights& weights, const Samples& samples, const Gathering& gathering, double* scratch) {
  for (std::size_t i = 0; i < samples.count; ++i) {
    const double* sample = samples.values + i * static_cast<std::size_t>(weights.inputs);
    if (samples.factors != nullptr && samples.factors[i] != 1.0) {
      const double rest = (1.0 - samples.factors[i]) * samples.centre;
      for (std::int32_t j = 0; j < weights.inputs; ++j) scratch[j] = samples.factors[i] * sample[j] + rest;
      sample = scratch;
    }
    double distance = 0.0;
    const auto winner = static_cast<std::size_t>(nearestUnit(weights, sample, distance));
    Tally& tally = gathering.tallies[winner];
    tally.error += distance;
    tally.hits += 1;
    if (distance > tally.farthest) {
      tally.farthest = distance;
      tally.farthestSample = static_cast<std::int64_t>(i);
    }
    double* sum = gathering.sums + winner * gathering.stride;
    for (std::int32_t j = 0; j < weights.inputs; ++j) sum[j] += sample[j];
  }
}

void search(const LaneWeights& weights, const double* samples, std::size_t count, std::int32_t* winners,
            double* distance, double*) {
  for (std::size_t i = 0; i < count; ++i, samples += weights.inputs)
    winners[i] = nearestUnit(weights, samples, *distance);
}

// The checks of a block are no part of what is measured.
bool usable(const double* values, std::size_t count) {
  return engine::portableKernel.usable(values, count);
}

engine::FactorKinds takeFactors(const double* given, std::size_t count, double* effective) {
  return engine::portableKernel.takeFactors(given, count, effective);
}

}  // namespace

const engine::Kernel plainLoops{"plain loops", 1, gather, search, usable, takeFactors};

}  // namespace mervane
