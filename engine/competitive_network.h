#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "component/network_engine/network_engine.h"
#include "engine/learning_rule.h"

namespace mervane {

/// The built-in network: one layer of competing units in a row. `engine::LearningRule` tells the rule.
///
/// Everything that a caller can get wrong raises a Failure with the run-time number 5, "invalid procedure call or
/// argument" (7 where memory does not suffice), a text that says what to do, and leaves the network as it was.
///
/// What the port leaves open is settled so:
/// - Weight grid: the first index is the unit, the second the input.
/// - Start weights: units that `SetWeight` sets apart keep their places. Where all are alike, as after
///   `InitConvexWeights`, the first epoch looks at the data and lays them out along its longest axis.
/// - Rate: from 0 to 1; a larger one counts as 1, a negative one as 0. Radius: in unit indexes, a negative one as 0.
/// - Convex factor: above 1 it counts as 1, below 0 as 0. `layer` arguments must be 0.
/// - Values of samples and weights: finite and below `engine::valueLimit` in size, so that nothing overflows.
/// - Ties between units go to the lowest index.
/// - Activation function: it shapes `response`, by the squared distance d of a unit from the sample. 0 gives -d,
///   1 ("zero threshold") 1 - d where that is positive and else 0, 2 gives 1 - tanh(d), 3 exp(-d / 2), 4 exp(-d), and
///   every other number counts as 0. All of them fall with the distance, and the winner is found by the distance
///   itself, so the number has no influence on the clusters, even where a response has sunk to 0 for several units.
class CompetitiveNetwork final : public NetworkEngine, public SampleBlocks {
 public:
  CompetitiveNetwork() = default;
  /// Works with the given kernel instead of the best one for the machine.
  explicit CompetitiveNetwork(const engine::Kernel& kernel) : kernel_(&kernel) {}

  void Create(std::int32_t layerCount, std::int32_t inputCount, std::span<const std::int32_t> neuronCounts,
              double initialWeights, std::int32_t activationFunction) override;
  std::int32_t GetWeightRows() override;
  std::int32_t GetWeightColumns() override;
  void InitConvexWeights() override;
  void FinishWeightSetup() override;
  void SetLearningRate(double rate) override;
  void SetRadius(std::int32_t radius) override;
  /// @return always 0.
  std::int32_t SetWeight(double value, std::int32_t layer, std::int32_t first, std::int32_t second) override;
  void SetInputs(std::span<const double> sample) override;
  void SetConvexInputs(std::span<const double> sample, double convexFactor, std::int32_t layer) override;
  void Propagate() override;
  std::int32_t GetWinner() override;
  void AdjustWeights() override;
  void DestroyNetwork() override;
  [[nodiscard]] SampleBlocks* blocks() noexcept override { return this; }

  void learn(std::span<const double> samples, std::int32_t count) override;
  void learnConvex(std::span<const double> samples, std::span<const double> convexFactors) override;
  void classify(std::span<const double> samples, std::span<std::int32_t> winners) override;
  void classifyConvex(std::span<const double> samples, std::span<std::int32_t> winners) override;

  /// The activation of one unit for the last Propagate, under the present weights.
  [[nodiscard]] double response(std::int32_t unit) const;
  /// Present weights, row-major, one row a unit.
  [[nodiscard]] std::span<const double> weights() const;

 private:
  /// How far the calls for the current sample have come.
  enum class Stage { none, presented, propagated };

  void requireNetwork(const char* operation) const;
  void requireLength(std::size_t values, std::size_t samples) const;
  [[nodiscard]] std::size_t countUsable(std::span<const double> values) const;
  void requireSample(std::span<const double> sample) const;
  void present(std::span<const double> sample, double factor);
  void learnBlock(std::span<const double> samples, std::size_t count, std::span<const double> factors);
  void findWinner();

  const engine::Kernel* kernel_ = nullptr;  ///< Null: chosen by the size of the network.
  bool created_ = false;
  std::int32_t activation_ = 0;
  engine::LearningRule rule_;
  Stage stage_ = Stage::none;
  bool learned_ = false;  ///< Samples have been learned that the weights do not show yet.
  double factor_ = 1.0;
  std::vector<double> sample_;  ///< As it came.
  std::vector<double> shown_;   ///< After the convex combination.
  std::int32_t winner_ = 0;
  double distance_ = 0.0;
};

}  // namespace mervane
