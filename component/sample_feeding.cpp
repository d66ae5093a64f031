#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <span>

#include "component/convex_schedule.h"
#include "component/network_engine/network_engine.h"
#include "component/sample_cache.h"
#include "component/wrapping_arithmetic.h"
#include "mervane/classifier3.h"

/// How the rows of Inputs reach the engine, one by one or in blocks.
namespace mervane {

namespace {
/// Samples in one call where something is computed for each: small enough for the stack and the nearest cache.
constexpr std::int64_t blockLength = 1024;
}  // namespace

void Classifier3::TrainEpoch(std::int32_t epoch) {
  const AnyArray& inputs = inputArray();
  const std::int64_t first = inputs.lowerBound(1);
  const std::int64_t last = inputs.upperBound(1);

  for (std::int64_t at = first + learnInBlocks(epoch); at <= last; ++at) {
    const auto row = static_cast<std::int32_t>(at);
    // 1.
    const std::int32_t samples = GetSamplesCount();
    const std::int32_t position = GetSampleIndex(row);
    // 2. Computed in either mode.
    const double convexFactor = ConvexSchedule(epoch, samples, EpochCount_).factor(position);
    // 3.
    const std::int32_t columns = GetColumnsCount();
    // 4.
    std::vector<double> sample = GetSampleVector(row, columns);
    // 5.
    SetNetworkInputs(sample, convexFactor);
    // 6.
    sample = {};
    // 7.
    network().Propagate();
    // 8.
    network().AdjustWeights();
  }
}

std::int32_t Classifier3::GetSampleIndex(std::int32_t row) const {
  return wrapping32::subtract(row, inputArray().lowerBound(1));
}

std::vector<double> Classifier3::GetSampleVector(std::int32_t row, std::int32_t columns) const {
  return readSample(inputArray(), row, columns, MinValues_.elements(), MaxValues_.elements(), AutoScaleInputs_);
}

void Classifier3::SetNetworkInputs(const std::vector<double>& sample, double convexFactor) {
  if (UseConvexCombination_) {
    network().SetConvexInputs(sample, convexFactor, 0);
  } else {
    network().SetInputs(sample);
  }
}

/// The engine's block interface where it may be used for the rows as they are now, with the cache filled; else null.
SampleBlocks* Classifier3::sampleBlocks() const {
  SampleBlocks* const blocks = NetworkHandle_ ? NetworkHandle_->blocks() : nullptr;
  if (blocks == nullptr) return nullptr;
  const AnyArray& inputs = inputArray();
  // A network that was built for other samples has to refuse them one by one.
  if (inputs.dimensions() != 2 || GetColumnsCount() < 1 || GetColumnsCount() != builtInputs_) return nullptr;
  if (!samples_->fill(inputs, MinValues_.elements(), MaxValues_.elements(), AutoScaleInputs_)) return nullptr;
  return blocks;
}

/// OPTIMIZATION: one pass in blocks, with the calls of the loop in TrainEpoch as its exact meaning.
/// @return rows learned: none where the engine takes no blocks, else those before the first that does not convert.
std::int64_t Classifier3::learnInBlocks(std::int32_t epoch) {
  SampleBlocks* const blocks = sampleBlocks();
  if (blocks == nullptr) return 0;
  const std::int64_t rows = samples_->rows();

  if (!UseConvexCombination_) {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    for (std::int64_t first = 0; first < rows;) {
      const std::int64_t count = std::min(rows - first, most);
      blocks->learn(samples_->block(first, count), static_cast<std::int32_t>(count));
      first += count;
    }
    return rows;
  }

  const ConvexSchedule schedule(epoch, GetSamplesCount(), EpochCount_);
  std::array<double, blockLength> factors;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled before use.
  for (std::int64_t first = 0; first < rows;) {
    const std::int64_t count = std::min(rows - first, blockLength);
    const auto block = std::span(factors).first(static_cast<std::size_t>(count));
    schedule.fill(block, static_cast<std::int32_t>(first));
    blocks->learnConvex(samples_->block(first, count), block);
    first += count;
  }
  return rows;
}

/// OPTIMIZATION: the results of many rows at once, with the calls of the loop in StoreResults as their exact meaning.
/// @param firstRow, lastRow what the loop has left to do. Inputs may have been replaced while a failure was shown, so
///     its rows may be fewer, more or others. @param winner the last one that was read.
/// @param refusal the failure of handing over the sample behind the rows that were done.
/// @return rows done.
std::int64_t Classifier3::classifyInBlocks(std::int64_t firstRow, std::int64_t lastRow, std::int32_t& winner,
                                           std::optional<Failure>& refusal) {
  SampleBlocks* const blocks = sampleBlocks();
  if (blocks == nullptr || OutputData_.bounds() != std::vector{inputArray().bounds().front()}) return 0;

  constexpr std::int32_t unread = std::numeric_limits<std::int32_t>::min();
  std::array<std::int32_t, blockLength> winners;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled before use.
  const std::int64_t start = firstRow - inputArray().lowerBound(1);
  if (start < 0) return 0;  // Such a row has to fail by itself.
  const std::int64_t end = std::min(samples_->rows(), start + (lastRow - firstRow) + 1);
  std::int64_t position = start;
  while (position < end && !refusal) {
    const auto count = static_cast<std::size_t>(std::min(end - position, blockLength));
    const auto block = std::span(winners).first(count);
    std::ranges::fill(block, unread);
    try {
      const auto samples = samples_->block(position, static_cast<std::int64_t>(count));
      if (UseConvexCombination_) {
        blocks->classifyConvex(samples, block);
      } else {
        blocks->classify(samples, block);
      }
    } catch (const Failure& failure) {
      refusal = failure;
    }
    for (const std::int32_t one : block) {
      if (refusal && one == unread) break;
      winner = one;
      OutputData_.elements()[static_cast<std::size_t>(position++)] = wrapping32::add(winner, 1);
    }
  }
  return position - start;
}

}  // namespace mervane
