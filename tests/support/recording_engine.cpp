#include "tests/support/recording_engine.h"

#include <algorithm>
#include <utility>

#include "mervane/convert.h"
#include "mervane/failure.h"

namespace mervane::tests {

namespace {

std::string listed(std::span<const double> values) {
  std::string text = "[";
  for (const double value : values) text += (text.size() > 1 ? " " : "") + formatExact(value);
  return text + "]";
}

std::string listed(std::span<const std::int32_t> values) {
  return listed(std::vector<double>(values.begin(), values.end()));
}

}  // namespace

void RecordingEngine::enter(std::string call) {
  calls.push_back(std::move(call));
  if (beforeCall) beforeCall(calls.back());
  if (failing.contains(static_cast<int>(calls.size()))) {
    throw Failure(failureNumber, "refused: " + calls.back(), "RecordingEngine");
  }
}

void RecordingEngine::Create(std::int32_t layerCount, std::int32_t inputCount,
                             std::span<const std::int32_t> neuronCounts, double initialWeights,
                             std::int32_t activationFunction) {
  enter("Create(" + std::to_string(layerCount) + ", " + std::to_string(inputCount) + ", " + listed(neuronCounts) +
        ", " + formatExact(initialWeights) + ", " + std::to_string(activationFunction) + ")");
  units_ = neuronCounts[0];
  weightRows = neuronCounts[0];
  weightColumns = inputCount;
}

std::int32_t RecordingEngine::GetWeightRows() {
  enter("GetWeightRows()");
  return weightRows;
}

std::int32_t RecordingEngine::GetWeightColumns() {
  enter("GetWeightColumns()");
  return weightColumns;
}

void RecordingEngine::InitConvexWeights() {
  enter("InitConvexWeights()");
}

void RecordingEngine::FinishWeightSetup() {
  enter("FinishWeightSetup()");
}

void RecordingEngine::SetLearningRate(double rate) {
  enter("SetLearningRate(" + formatExact(rate) + ")");
}

void RecordingEngine::SetRadius(std::int32_t radius) {
  enter("SetRadius(" + std::to_string(radius) + ")");
}

std::int32_t RecordingEngine::SetWeight(double value, std::int32_t layer, std::int32_t first, std::int32_t second) {
  enter("SetWeight(" + formatExact(value) + ", " + std::to_string(layer) + ", " + std::to_string(first) + ", " +
        std::to_string(second) + ")");
  return 0;
}

void RecordingEngine::SetInputs(std::span<const double> sample) {
  enter("SetInputs(" + listed(sample) + ")");
  current_.assign(sample.begin(), sample.end());
}

void RecordingEngine::SetConvexInputs(std::span<const double> sample, double convexFactor, std::int32_t layer) {
  enter("SetConvexInputs(" + listed(sample) + ", " + formatExact(convexFactor) + ", " + std::to_string(layer) + ")");
  current_.assign(sample.begin(), sample.end());
}

void RecordingEngine::Propagate() {
  enter("Propagate()");
}

std::int32_t RecordingEngine::GetWinner() {
  enter("GetWinner()");
  if (winner) return winner(current_);
  if (current_.empty()) return 0;
  return std::clamp(static_cast<std::int32_t>(current_[0] * units_), 0, std::max(units_ - 1, 0));
}

void RecordingEngine::AdjustWeights() {
  enter("AdjustWeights()");
}

void RecordingEngine::DestroyNetwork() {
  enter("DestroyNetwork()");
}

std::vector<std::string> RecordingEngine::callsOf(const std::string& beginning) const {
  std::vector<std::string> found;
  std::ranges::copy_if(calls, std::back_inserter(found),
                       [&](const std::string& call) { return call.starts_with(beginning); });
  return found;
}

void RecordingEngine::learn(std::span<const double> samples, std::int32_t count) {
  ++blockCalls;
  lastBlock = samples.data();
  blockSamples += static_cast<std::size_t>(count);
  const std::size_t length = samples.size() / static_cast<std::size_t>(count);
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
    SetInputs(samples.subspan(i * length, length));
    Propagate();
    AdjustWeights();
  }
}

void RecordingEngine::learnConvex(std::span<const double> samples, std::span<const double> convexFactors) {
  ++blockCalls;
  lastBlock = samples.data();
  blockSamples += convexFactors.size();
  const std::size_t length = samples.size() / convexFactors.size();
  for (std::size_t i = 0; i < convexFactors.size(); ++i) {
    SetConvexInputs(samples.subspan(i * length, length), convexFactors[i], 0);
    Propagate();
    AdjustWeights();
  }
}

void RecordingEngine::classify(std::span<const double> samples, std::span<std::int32_t> winners) {
  ++blockCalls;
  lastBlock = samples.data();
  blockSamples += winners.size();
  const std::size_t length = samples.size() / winners.size();
  for (std::size_t i = 0; i < winners.size(); ++i) {
    SetInputs(samples.subspan(i * length, length));
    Propagate();
    winners[i] = GetWinner();
  }
}

void RecordingEngine::classifyConvex(std::span<const double> samples, std::span<std::int32_t> winners) {
  ++blockCalls;
  lastBlock = samples.data();
  blockSamples += winners.size();
  const std::size_t length = samples.size() / winners.size();
  for (std::size_t i = 0; i < winners.size(); ++i) {
    SetConvexInputs(samples.subspan(i * length, length), 1.0, 0);
    Propagate();
    winners[i] = GetWinner();
  }
}

}  // namespace mervane::tests
