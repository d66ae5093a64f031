#pragma once

#include <cstdint>
#include <span>

namespace mervane {

class SampleBlocks;

/// The outside network object that the component creates once and drives call by call.
///
/// The component decides the schedule, the order of the samples and their scaling; the engine owns the learning
/// rule. Operations report trouble by raising a Failure. All calls come on one thread. For each sample the
/// component calls SetInputs or SetConvexInputs, then Propagate, then AdjustWeights (training) or GetWinner
/// (results). Rate and radius are set between epochs only; both are 0 at the end of training.
class NetworkEngine {
 public:
  virtual ~NetworkEngine() = default;

  /// Builds a network, replacing whatever an earlier call built on this object.
  /// @param layerCount always 1.
  /// @param neuronCounts one element: the number of units.
  virtual void Create(std::int32_t layerCount, std::int32_t inputCount, std::span<const std::int32_t> neuronCounts,
                      double initialWeights, std::int32_t activationFunction) = 0;
  /// Extents of the weight grid that SetWeight walks.
  virtual std::int32_t GetWeightRows() = 0;
  virtual std::int32_t GetWeightColumns() = 0;
  /// Sets the weights up for convex mode by itself; nothing else closes that set-up.
  virtual void InitConvexWeights() = 0;
  /// Closes the cell-by-cell set-up after all SetWeight calls.
  virtual void FinishWeightSetup() = 0;
  virtual void SetLearningRate(double rate) = 0;
  virtual void SetRadius(std::int32_t radius) = 0;
  /// @param layer always 0. The result is ignored by the component.
  virtual std::int32_t SetWeight(double value, std::int32_t layer, std::int32_t first, std::int32_t second) = 0;
  /// @param sample one element per input, index 0 first; the engine copies what it keeps.
  virtual void SetInputs(std::span<const double> sample) = 0;
  /// @param convexFactor starts near 0 and ends above 1. @param layer always 0.
  virtual void SetConvexInputs(std::span<const double> sample, double convexFactor, std::int32_t layer) = 0;
  virtual void Propagate() = 0;
  /// @return zero-based index of the winning unit for the last Propagate.
  virtual std::int32_t GetWinner() = 0;
  virtual void AdjustWeights() = 0;
  /// Releases what Create built.
  virtual void DestroyNetwork() = 0;

  /// An engine in this process may take whole blocks of samples; null where it cannot.
  [[nodiscard]] virtual SampleBlocks* blocks() noexcept { return nullptr; }
};

/// Many samples in one call, with exactly the outcome of the single calls: the same bits, the same order, and
/// a failing sample raises with all samples before it already learned.
///
/// A sample fails only by being refused, as SetInputs or SetConvexInputs would refuse it: the current sample is then
/// still the one before it, and the samples behind it have not been looked at.
///
/// OPTIMIZATION: saves a virtual call, a copy and a bounds check per sample.
class SampleBlocks {
 public:
  virtual ~SampleBlocks() = default;

  /// SetInputs or SetConvexInputs, Propagate, AdjustWeights for each sample in order.
  /// @param samples row-major, `convexFactors.size()` or `count` rows of the network's input count.
  virtual void learn(std::span<const double> samples, std::int32_t count) = 0;
  virtual void learnConvex(std::span<const double> samples, std::span<const double> convexFactors) = 0;
  /// SetInputs (or SetConvexInputs with the factor 1.0), Propagate, GetWinner for each sample in order.
  /// @param winners one element per sample; elements before a failing sample are filled.
  virtual void classify(std::span<const double> samples, std::span<std::int32_t> winners) = 0;
  virtual void classifyConvex(std::span<const double> samples, std::span<std::int32_t> winners) = 0;
};

}  // namespace mervane
