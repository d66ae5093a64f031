#include "engine/competitive_network.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <string>

#include "engine/choose_kernel.h"
#include "engine/convex_combination.h"
#include "mervane/enumerations.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane {

namespace {

constexpr const char* source = "MervaneEngine.CompetitiveNetwork";

/// 16 Mi weights are 128 MiB; a network needs a few times that.
constexpr std::int64_t mostWeights = std::int64_t{1} << 24;
/// Samples are checked and learned in portions of `engine::portion` values, so that they are still in the nearest cache
/// when they are learned, and of at most so many samples.
constexpr std::size_t samplesAtATime = 512;

[[noreturn]] void refuse(const std::string& text) {
  throw Failure(runtime::invalidProcedureCall.number, text, source);
}

bool notNumber(double value) {
  return std::isnan(value);
}

bool usable(double value) {
  return std::abs(value) < engine::valueLimit;
}

void requireFactor(double factor) {
  if (notNumber(factor)) refuse("The convex factor is not a number. Pass a number, usually from 0 to 1.");
}

void requireFirstLayer(std::int32_t layer) {
  if (layer != 0) refuse("The network has one layer, number 0; layer " + std::to_string(layer) + " does not exist.");
}

void requireSize(std::int32_t inputs, std::int32_t units) {
  if (inputs < 1)
    refuse("A network needs at least one input, not " + std::to_string(inputs) + ". Give data with numeric columns.");
  if (units < 1)
    refuse("A network needs at least one unit, not " + std::to_string(units) + ". Ask for one cluster or more.");
  if (std::int64_t{inputs} * units > mostWeights)
    refuse(std::to_string(units) + " units with " + std::to_string(inputs) + " inputs make more than " +
           std::to_string(mostWeights) + " weights. Ask for fewer clusters or give fewer columns.");
}

}  // namespace

void CompetitiveNetwork::Create(std::int32_t layerCount, std::int32_t inputCount,
                                std::span<const std::int32_t> neuronCounts, double initialWeights,
                                std::int32_t activationFunction) {
  if (layerCount != 1) refuse("The network has one layer; " + std::to_string(layerCount) + " layers cannot be built.");
  if (neuronCounts.size() != 1)
    refuse("One unit count is needed for the one layer, not " + std::to_string(neuronCounts.size()) + ".");
  requireSize(inputCount, neuronCounts[0]);
  if (!usable(initialWeights)) refuse("The initial weight must be a finite number below 1e72 in size.");
  try {
    const engine::Kernel& kernel = kernel_ != nullptr ? *kernel_ : engine::chooseKernel(neuronCounts[0], inputCount);
    engine::LearningRule rule(neuronCounts[0], inputCount, initialWeights, kernel);
    sample_.assign(static_cast<std::size_t>(inputCount), 0.0);
    shown_ = sample_;
    rule_ = std::move(rule);
  } catch (const std::bad_alloc&) {
    throw Failure(runtime::outOfMemory.number,
                  "There is not enough memory for " + std::to_string(neuronCounts[0]) + " units with " +
                      std::to_string(inputCount) + " inputs. Ask for fewer clusters or give fewer columns.",
                  source);
  }
  created_ = true;
  activation_ = activationFunction;
  stage_ = Stage::none;
  learned_ = false;
}

std::int32_t CompetitiveNetwork::GetWeightRows() {
  requireNetwork("GetWeightRows");
  return rule_.units();
}

std::int32_t CompetitiveNetwork::GetWeightColumns() {
  requireNetwork("GetWeightColumns");
  return rule_.inputs();
}

void CompetitiveNetwork::InitConvexWeights() {
  requireNetwork("InitConvexWeights");
  for (std::int32_t unit = 0; unit < rule_.units(); ++unit)
    for (std::int32_t input = 0; input < rule_.inputs(); ++input) rule_.setWeight(unit, input, rule_.convexCentre());
  FinishWeightSetup();
}

void CompetitiveNetwork::FinishWeightSetup() {
  requireNetwork("FinishWeightSetup");
  rule_.startLearning();
  stage_ = Stage::none;
  learned_ = false;
}

void CompetitiveNetwork::SetLearningRate(double rate) {
  requireNetwork("SetLearningRate");
  if (!std::isfinite(rate)) refuse("The learning rate is not a finite number. Set a rate from 0 to 1.");
  rule_.setRate(std::clamp(rate, 0.0, 1.0));
  learned_ = false;
}

void CompetitiveNetwork::SetRadius(std::int32_t radius) {
  requireNetwork("SetRadius");
  rule_.setRadius(std::max(radius, 0));
  learned_ = false;
}

std::int32_t CompetitiveNetwork::SetWeight(double value, std::int32_t layer, std::int32_t first, std::int32_t second) {
  requireNetwork("SetWeight");
  requireFirstLayer(layer);
  if (first < 0 || first >= rule_.units() || second < 0 || second >= rule_.inputs())
    refuse("There is no weight (" + std::to_string(first) + ", " + std::to_string(second) + "); the grid has " +
           std::to_string(rule_.units()) + " units with " + std::to_string(rule_.inputs()) +
           " inputs, counted from 0.");
  if (!usable(value)) refuse("A weight must be a finite number below 1e72 in size.");
  rule_.setWeight(first, second, value);
  return 0;
}

void CompetitiveNetwork::SetInputs(std::span<const double> sample) {
  requireNetwork("SetInputs");
  present(sample, 1.0);
}

void CompetitiveNetwork::SetConvexInputs(std::span<const double> sample, double convexFactor, std::int32_t layer) {
  requireNetwork("SetConvexInputs");
  requireFirstLayer(layer);
  requireFactor(convexFactor);
  present(sample, engine::effectiveFactor(convexFactor));
}

void CompetitiveNetwork::Propagate() {
  requireNetwork("Propagate");
  if (stage_ == Stage::none) refuse("There is no sample. Call SetInputs or SetConvexInputs before Propagate.");
  findWinner();
  stage_ = Stage::propagated;
}

std::int32_t CompetitiveNetwork::GetWinner() {
  requireNetwork("GetWinner");
  if (stage_ != Stage::propagated) refuse("There is no winner yet. Call Propagate before GetWinner.");
  if (learned_) {
    rule_.finish();
    learned_ = false;
    findWinner();
  }
  return winner_;
}

void CompetitiveNetwork::AdjustWeights() {
  requireNetwork("AdjustWeights");
  if (stage_ != Stage::propagated) refuse("There is nothing to learn. Call Propagate before AdjustWeights.");
  rule_.learn(sample_, factor_, shown_, winner_, distance_);
  learned_ = true;
}

void CompetitiveNetwork::DestroyNetwork() {
  rule_ = engine::LearningRule();
  sample_ = {};
  shown_ = {};
  created_ = false;
  stage_ = Stage::none;
  learned_ = false;
}

void CompetitiveNetwork::learn(std::span<const double> samples, std::int32_t count) {
  requireNetwork("learn");
  if (count < 0) refuse("The number of samples cannot be " + std::to_string(count) + ".");
  requireLength(samples.size(), static_cast<std::size_t>(count));
  learnBlock(samples, static_cast<std::size_t>(count), {});
}

void CompetitiveNetwork::learnConvex(std::span<const double> samples, std::span<const double> convexFactors) {
  requireNetwork("learnConvex");
  requireLength(samples.size(), convexFactors.size());
  learnBlock(samples, convexFactors.size(), convexFactors);
}

void CompetitiveNetwork::classify(std::span<const double> samples, std::span<std::int32_t> winners) {
  requireNetwork("classify");
  requireLength(samples.size(), winners.size());
  const auto inputs = static_cast<std::size_t>(rule_.inputs());
  const std::size_t bad = countUsable(samples);
  const std::size_t good = bad / inputs;
  if (good > 0) {
    if (learned_) rule_.finish();
    learned_ = false;
    present(samples.subspan((good - 1) * inputs, inputs), 1.0);
    distance_ = rule_.search(samples.first(good * inputs), winners.first(good));
    winner_ = winners[good - 1];
    stage_ = Stage::propagated;
  }
  if (bad < samples.size()) requireSample(samples.subspan(good * inputs, inputs));
}

void CompetitiveNetwork::classifyConvex(std::span<const double> samples, std::span<std::int32_t> winners) {
  classify(samples, winners);  // The factor is 1, and F x + (1 - F) / sqrt(inputs) is x then.
}

double CompetitiveNetwork::response(std::int32_t unit) const {
  requireNetwork("response");
  if (stage_ != Stage::propagated) refuse("There is no response yet. Call Propagate first.");
  if (unit < 0 || unit >= rule_.units())
    refuse("There is no unit " + std::to_string(unit) + "; the network has " + std::to_string(rule_.units()) + ".");
  const double* weight = weights().data() + static_cast<std::size_t>(unit) * shown_.size();
  double distance = 0.0;
  for (std::size_t j = 0; j < shown_.size(); ++j) distance += (shown_[j] - weight[j]) * (shown_[j] - weight[j]);
  switch (activation_) {
    case ACTIVATE_FUNC_ZEROT:
      return std::max(1.0 - distance, 0.0);
    case ACTIVATE_FUNC_TANH:
      return 1.0 - std::tanh(distance);
    case ACTIVATE_FUNC_EXP05:
      return std::exp(-0.5 * distance);
    case ACTIVATE_FUNC_EXP:
      return std::exp(-distance);
    default:
      return -distance;
  }
}

std::span<const double> CompetitiveNetwork::weights() const {
  requireNetwork("weights");
  return rule_.weights();
}

void CompetitiveNetwork::requireNetwork(const char* operation) const {
  if (!created_) refuse(std::string("There is no network. Call Create before ") + operation + ".");
}

void CompetitiveNetwork::requireLength(std::size_t values, std::size_t samples) const {
  const auto inputs = static_cast<std::size_t>(rule_.inputs());
  if (values != samples * inputs)
    refuse(std::to_string(samples) + " samples of " + std::to_string(inputs) + " inputs make " +
           std::to_string(samples * inputs) + " values, but " + std::to_string(values) + " were given.");
}

/// How many values come before the first that cannot be used.
std::size_t CompetitiveNetwork::countUsable(std::span<const double> values) const {
  if (rule_.kernel().usable(values.data(), values.size())) return values.size();
  return static_cast<std::size_t>(std::ranges::find_if_not(values, usable) - values.begin());
}

void CompetitiveNetwork::requireSample(std::span<const double> sample) const {
  const std::size_t bad = countUsable(sample);
  if (bad == sample.size()) return;
  const char* trouble = std::isfinite(sample[bad]) ? " is larger than 1e72 in size. Scale the data."
                                                   : " is not a finite number. Mend or leave out the row.";
  refuse("Value " + std::to_string(bad + 1) + " of the sample" + trouble);
}

void CompetitiveNetwork::present(std::span<const double> sample, double factor) {
  requireLength(sample.size(), 1);
  requireSample(sample);
  std::copy(sample.begin(), sample.end(), sample_.begin());
  engine::combineConvex(sample_, factor, rule_.convexCentre(), shown_);
  factor_ = factor;
  stage_ = Stage::presented;
}

void CompetitiveNetwork::learnBlock(std::span<const double> samples, std::size_t count,
                                    std::span<const double> factors) {
  const auto inputs = static_cast<std::size_t>(rule_.inputs());
  const std::size_t together = std::clamp(engine::portion / inputs, std::size_t{1}, samplesAtATime);
  std::array<double, samplesAtATime> effective;
  while (count > 0) {
    const std::size_t wanted = std::min(count, together);
    const std::span<const double> block = samples.first(wanted * inputs);
    std::size_t good = countUsable(block) / inputs;
    bool contracting = false;
    if (!factors.empty()) {
      const std::span<const double> given = factors.first(wanted);
      const engine::FactorKinds kinds = rule_.kernel().takeFactors(given.data(), wanted, effective.data());
      contracting = kinds.contracting;
      if (kinds.notNumbers) {
        good = std::min(good, static_cast<std::size_t>(std::ranges::find_if(given, notNumber) - given.begin()));
        contracting = std::ranges::any_of(std::span(effective).first(good), [](double one) { return one < 1.0; });
      }
    }
    rule_.learn(block.first(good * inputs), good, std::span(effective).first(contracting ? good : 0));
    learned_ = learned_ || good > 0;
    if (good > 0) stage_ = Stage::none;
    if (good < wanted) {
      if (!factors.empty()) requireFactor(factors[good]);
      requireSample(block.subspan(good * inputs, inputs));
    }
    samples = samples.subspan(wanted * inputs);
    if (!factors.empty()) factors = factors.subspan(wanted);
    count -= wanted;
  }
}

void CompetitiveNetwork::findWinner() {
  distance_ = rule_.search(shown_, {&winner_, 1});
}

}  // namespace mervane
