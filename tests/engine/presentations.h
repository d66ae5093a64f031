#pragma once

#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

#include "bench/schedule.h"
#include "component/network_engine/network_engine.h"

/// Samples and trainings for the tests of the built-in network.
namespace mervane::presentations {

/// Samples around a few places, the same on each call with the same numbers.
inline std::vector<double> samples(std::int32_t rows, std::int32_t inputs, std::uint64_t seed = 1) {
  std::uint64_t state = seed;
  std::vector<double> values;
  for (std::int32_t row = 0; row < rows; ++row) {
    for (std::int32_t j = 0; j < inputs; ++j) {
      state = state * 6364136223846793005ULL + 1442695040888963407ULL;
      const double noise = static_cast<double>(state >> 11) / 9007199254740992.0;
      values.push_back(0.3 * ((row * 7 + j * 3) % 4) + 0.2 * noise);
    }
  }
  return values;
}

inline void create(NetworkEngine& network, std::int32_t units, std::int32_t inputs, bool convex) {
  const std::int32_t counts[] = {units};
  network.Create(1, inputs, counts, 0.3, 3);
  if (convex) {
    network.InitConvexWeights();
    return;
  }
  for (std::int32_t i = 0; i < network.GetWeightRows(); ++i)
    for (std::int32_t j = 0; j < network.GetWeightColumns(); ++j) network.SetWeight(0.3, 0, i, j);
  network.FinishWeightSetup();
}

/// One epoch by single calls.
inline void learnSingly(NetworkEngine& network, std::span<const double> values, std::size_t inputs, bool convex,
                        const bench::Schedule& schedule, std::int32_t epoch) {
  for (std::size_t i = 0; i * inputs < values.size(); ++i) {
    const std::span<const double> sample = values.subspan(i * inputs, inputs);
    if (convex)
      network.SetConvexInputs(sample, schedule.convexFactor(epoch, static_cast<std::int32_t>(i)), 0);
    else
      network.SetInputs(sample);
    network.Propagate();
    network.AdjustWeights();
  }
}

/// A whole training by single calls.
inline void train(NetworkEngine& network, std::span<const double> values, std::size_t inputs, bool convex,
                  std::int32_t epochs = 100) {
  const bench::Schedule schedule{epochs, static_cast<std::int32_t>(values.size() / inputs)};
  for (std::int32_t epoch = 1; epoch <= epochs; ++epoch) {
    network.SetLearningRate(schedule.rate(epoch));
    network.SetRadius(schedule.radius(epoch));
    learnSingly(network, values, inputs, convex, schedule, epoch);
  }
}

inline std::vector<std::int32_t> winners(NetworkEngine& network, std::span<const double> values, std::size_t inputs) {
  std::vector<std::int32_t> result;
  for (std::size_t i = 0; i * inputs < values.size(); ++i) {
    network.SetInputs(values.subspan(i * inputs, inputs));
    network.Propagate();
    result.push_back(network.GetWinner());
  }
  return result;
}

}  // namespace mervane::presentations
