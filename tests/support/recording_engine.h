#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "component/network_engine/network_engine.h"

namespace mervane::tests {

/// A network that learns nothing and writes down every call with its arguments, such as "SetConvexInputs([0.5], 1, 0)".
/// Numbers are written so that each double has a text of its own.
///
/// With `offersBlocks` it takes blocks too and enters them as the single calls that they stand for, so the lists
/// of a run with blocks and of one without have to be equal.
class RecordingEngine : public NetworkEngine, private SampleBlocks {
 public:
  std::vector<std::string> calls;
  /// Calls that fail, by their number from 1; a refused call is in the list and has no other effect.
  std::set<int> failing;
  /// Called with each call's text before it takes effect; may raise.
  std::function<void(const std::string& call)> beforeCall;
  /// The winning unit of a sample; by default the first value, from 0 to 1, spread over the units.
  std::function<std::int32_t(const std::vector<double>& sample)> winner;
  bool offersBlocks = false;
  int blockCalls = 0;
  std::size_t blockSamples = 0;       ///< in all blocks together
  const double* lastBlock = nullptr;  ///< where the samples of the last block lay
  std::int32_t weightRows = 0;        ///< by Create: the units
  std::int32_t weightColumns = 0;

  static constexpr std::int32_t failureNumber = 4711;

  void Create(std::int32_t layerCount, std::int32_t inputCount, std::span<const std::int32_t> neuronCounts,
              double initialWeights, std::int32_t activationFunction) override;
  std::int32_t GetWeightRows() override;
  std::int32_t GetWeightColumns() override;
  void InitConvexWeights() override;
  void FinishWeightSetup() override;
  void SetLearningRate(double rate) override;
  void SetRadius(std::int32_t radius) override;
  std::int32_t SetWeight(double value, std::int32_t layer, std::int32_t first, std::int32_t second) override;
  void SetInputs(std::span<const double> sample) override;
  void SetConvexInputs(std::span<const double> sample, double convexFactor, std::int32_t layer) override;
  void Propagate() override;
  std::int32_t GetWinner() override;
  void AdjustWeights() override;
  void DestroyNetwork() override;
  [[nodiscard]] SampleBlocks* blocks() noexcept override { return offersBlocks ? this : nullptr; }

  /// The calls whose text begins so.
  [[nodiscard]] std::vector<std::string> callsOf(const std::string& beginning) const;

 private:
  void learn(std::span<const double> samples, std::int32_t count) override;
  void learnConvex(std::span<const double> samples, std::span<const double> convexFactors) override;
  void classify(std::span<const double> samples, std::span<std::int32_t> winners) override;
  void classifyConvex(std::span<const double> samples, std::span<std::int32_t> winners) override;

  void enter(std::string call);

  std::int32_t units_ = 0;
  std::vector<double> current_;
};

}  // namespace mervane::tests
