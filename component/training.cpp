#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "component/network_engine/network_engine.h"
#include "component/procedure_keys.h"
#include "component/sample_cache.h"
#include "component/wrapping_arithmetic.h"
#include "mervane/classifier3.h"
#include "mervane/convert.h"
#include "support/procedures.h"

/// One run: the network is created, trained over a fixed number of epochs, and read.
namespace mervane {

namespace key = component::key;

void Classifier3::Run() {
  const auto self = shared_from_this();  // A sink may drop the last reference of the client's.
  // Not kept beyond the run, however it ends: the cache is as large as the array.
  struct WithoutCache {
    SampleCache& samples;
    ~WithoutCache() { samples.drop(); }
  };
  const WithoutCache behind{*samples_};
  traced(key::Run, [&](Steps& step) {
    step([&] { CreateNetwork(); });
    step([&] { TrainNetwork(); });
    step([&] { StoreResults(); });
  });
}

void Classifier3::CreateNetwork() {
  traced(key::CreateNetwork, [&](Steps& step) {
    // 1.
    const std::array neuronCounts{Clusters_};
    // 2.
    std::int32_t columns = 0;
    step([&] { columns = GetColumnsCount(); });
    // 3.
    step([&] {
      builtInputs_ = 0;
      network().Create(1, columns, neuronCounts, InitialWeights_, ActivationFunction_);
      builtInputs_ = columns;
    });
    // 4.
    step([&] { InitializeWeights(); });
  });
}

void Classifier3::InitializeWeights() {
  // 1. NB: FinishWeightSetup has no part in this mode.
  if (UseConvexCombination_) {
    network().InitConvexWeights();
    return;
  }
  // 2.
  const std::int32_t rows = network().GetWeightRows();
  // 3.
  for (std::int32_t i = 0; i < rows; ++i) {
    const std::int32_t columns = network().GetWeightColumns();
    for (std::int32_t j = 0; j < columns; ++j) network().SetWeight(InitialWeights_, 0, i, j);
  }
  // 4.
  network().FinishWeightSetup();
}

double Classifier3::GetCurrentLearningRate(std::int32_t epoch) const {
  return (1.0 - static_cast<double>(epoch) / static_cast<double>(EpochCount_)) * LearningRate_;
}

std::int32_t Classifier3::GetCurrentRadius(std::int32_t epoch) const {
  const auto remaining = static_cast<double>(wrapping32::subtract(EpochCount_, epoch));
  return roundToInt32(remaining * LearningRadius_ / (static_cast<double>(EpochCount_) * 1.2));
}

void Classifier3::TrainNetwork() {
  traced(key::TrainNetwork, [&](Steps& step) {
    // 1.
    StopRequested_ = false;
    // 2. The bound is read once, rate and radius follow the property as it changes.
    const std::int32_t last = EpochCount_;
    for (std::int32_t epoch = 1; epoch <= last; ++epoch) {
      // 2.1, 2.2
      step([&] {
        const double rate = GetCurrentLearningRate(epoch);
        network().SetLearningRate(rate);
      });
      step([&] {
        const std::int32_t radius = GetCurrentRadius(epoch);
        network().SetRadius(radius);
      });
      // 2.3 A retry shows the whole pass again, from its first sample.
      step([&] { TrainEpoch(epoch); });
      // 2.4 A stop is seen only here, after a whole pass.
      if (StopRequested_) break;  // NB: this epoch raises no event.
      // 2.5
      double rate = 0.0;
      std::int32_t radius = 0;
      step([&] {
        rate = GetCurrentLearningRate(epoch);
        radius = GetCurrentRadius(epoch);
      });
      // 2.6
      step([&] { raiseNextEpoch(epoch, rate, radius); });
      if (epoch == std::numeric_limits<std::int32_t>::max()) break;
    }
  });
}

void Classifier3::raiseNextEpoch(std::int32_t& epoch, double rate, std::int32_t radius) {
  if (sinks_.empty()) return;
  const std::vector<Sink> sinks = sinks_;  // A sink may add and remove sinks.
  for (const Sink& sink : sinks) (*sink.call)(epoch, rate, radius);
}

}  // namespace mervane
