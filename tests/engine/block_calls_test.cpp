#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "engine/competitive_network.h"
#include "mervane/failure.h"
#include "tests/engine/presentations.h"

namespace mervane {
namespace {

constexpr std::size_t inputs = 3;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::vector<double> weightsOf(const CompetitiveNetwork& network) {
  return {network.weights().begin(), network.weights().end()};
}

std::vector<double> factorsOf(const bench::Schedule& schedule, std::int32_t epoch) {
  std::vector<double> factors;
  for (std::int32_t row = 0; row < schedule.rows; ++row) factors.push_back(schedule.convexFactor(epoch, row));
  return factors;
}

/// Trains by blocks of `together` samples.
void trainByBlocks(CompetitiveNetwork& network, std::span<const double> values, bool convex, std::int32_t epochs,
                   std::size_t together) {
  const std::size_t rows = values.size() / inputs;
  const bench::Schedule schedule{epochs, static_cast<std::int32_t>(rows)};
  for (std::int32_t epoch = 1; epoch <= epochs; ++epoch) {
    network.SetLearningRate(schedule.rate(epoch));
    network.SetRadius(schedule.radius(epoch));
    const std::vector<double> factors = factorsOf(schedule, epoch);
    for (std::size_t first = 0; first < rows; first += together) {
      const std::size_t count = std::min(together, rows - first);
      const std::span<const double> block = values.subspan(first * inputs, count * inputs);
      if (convex)
        network.learnConvex(block, std::span(factors).subspan(first, count));
      else
        network.learn(block, static_cast<std::int32_t>(count));
    }
  }
}

TEST(SampleBlocks, GiveTheBitsOfSingleCallsInBothModesAndAnyBlockLength) {
  const std::vector<double> values = presentations::samples(700, inputs);
  for (const bool convex : {false, true}) {
    CompetitiveNetwork single;
    presentations::create(single, 5, inputs, convex);
    presentations::train(single, values, inputs, convex, 30);
    const std::vector<std::int32_t> expected = presentations::winners(single, values, inputs);
    for (const std::size_t together : {1U, 7U, 511U, 512U, 513U, 700U}) {
      CompetitiveNetwork block;
      presentations::create(block, 5, inputs, convex);
      trainByBlocks(block, values, convex, 30, together);
      std::vector<std::int32_t> found(700);
      if (convex)
        block.classifyConvex(values, found);
      else
        block.classify(values, found);
      EXPECT_EQ(found, expected) << "convex " << convex << ", blocks of " << together;
      EXPECT_EQ(weightsOf(block), weightsOf(single)) << "convex " << convex << ", blocks of " << together;
    }
  }
}

/// Runs the same steps by single calls and by blocks up to the bad sample; the failures and all that follows are the
/// same.
TEST(SampleBlocks, AFailingSampleRaisesWithAllBeforeItLearned) {
  for (const bool convex : {false, true}) {
    for (const std::size_t bad : {0U, 1U, 511U, 512U, 599U}) {
      std::vector<double> values = presentations::samples(600, inputs);
      CompetitiveNetwork single;
      CompetitiveNetwork block;
      const bench::Schedule schedule{10, 600};
      const std::vector<double> factors = factorsOf(schedule, 2);
      std::string singleText;
      std::string blockText;
      for (CompetitiveNetwork* network : {&single, &block}) {
        presentations::create(*network, 4, inputs, convex);
        network->SetLearningRate(0.4);
        network->SetRadius(1);
        presentations::learnSingly(*network, values, inputs, convex, schedule, 1);
        network->SetLearningRate(0.3);
      }
      std::vector<double> spoilt = values;
      spoilt[bad * inputs + 1] = notANumber;
      try {
        presentations::learnSingly(single, spoilt, inputs, convex, schedule, 2);
      } catch (const Failure& failure) {
        singleText = failure.description();
      }
      try {
        if (convex)
          block.learnConvex(spoilt, factors);
        else
          block.learn(spoilt, 600);
      } catch (const Failure& failure) {
        blockText = failure.description();
      }
      EXPECT_EQ(singleText, "Value 2 of the sample is not a finite number. Mend or leave out the row.");
      EXPECT_EQ(blockText, singleText);
      single.SetLearningRate(0.2);
      block.SetLearningRate(0.2);
      EXPECT_EQ(weightsOf(block), weightsOf(single)) << "convex " << convex << ", bad sample " << bad;
    }
  }
}

TEST(SampleBlocks, AFactorThatIsNotANumberStopsBeforeItsSample) {
  const std::vector<double> values = presentations::samples(6, inputs);
  CompetitiveNetwork stopped;
  CompetitiveNetwork whole;
  for (CompetitiveNetwork* network : {&stopped, &whole}) {
    presentations::create(*network, 2, inputs, false);
    network->SetWeight(0.9, 0, 1, 0);
    network->FinishWeightSetup();
    network->SetLearningRate(0.5);
  }
  const std::vector<double> factors{1.0, 1.0, 1.0, notANumber, 0.5, 0.5};
  EXPECT_THROW(stopped.learnConvex(values, factors), Failure);
  whole.learn(std::span(values).first(3 * inputs), 3);
  stopped.SetLearningRate(0.25);
  whole.SetLearningRate(0.25);
  EXPECT_EQ(weightsOf(stopped), weightsOf(whole));
  // The factors behind it do not count either: the next epoch goes on alike.
  for (int epoch = 0; epoch < 20; ++epoch) {
    for (CompetitiveNetwork* network : {&stopped, &whole}) {
      network->learn(values, 6);
      network->SetLearningRate(0.2);
    }
  }
  EXPECT_EQ(weightsOf(stopped), weightsOf(whole));
}

TEST(SampleBlocks, ClassifyFillsTheWinnersBeforeAFailingSample) {
  std::vector<double> values = presentations::samples(5, inputs);
  CompetitiveNetwork network;
  presentations::create(network, 3, inputs, true);
  presentations::train(network, values, inputs, true, 20);
  const std::vector<std::int32_t> expected = presentations::winners(network, values, inputs);
  values[3 * inputs] = notANumber;
  std::vector<std::int32_t> found(5, -7);
  EXPECT_THROW(network.classifyConvex(values, found), Failure);
  EXPECT_EQ(std::vector(found.begin(), found.begin() + 3), std::vector(expected.begin(), expected.begin() + 3));
  EXPECT_EQ(found[3], -7);
  EXPECT_EQ(found[4], -7);
}

TEST(SampleBlocks, ClassifyBringsInWhatWasLearnedJustAsGetWinnerDoes) {
  const std::vector<double> values = presentations::samples(40, inputs);
  CompetitiveNetwork single;
  CompetitiveNetwork block;
  for (CompetitiveNetwork* network : {&single, &block}) {
    presentations::create(*network, 3, inputs, false);
    network->SetLearningRate(0.5);
    network->learn(values, 40);
    network->SetLearningRate(0.4);
    network->learn(values, 40);
  }
  std::vector<std::int32_t> found(40);
  block.classify(values, found);
  EXPECT_EQ(found, presentations::winners(single, values, inputs));
  EXPECT_EQ(weightsOf(block), weightsOf(single));
}

TEST(SampleBlocks, EmptyBlocksDoNothing) {
  CompetitiveNetwork network;
  presentations::create(network, 3, inputs, false);
  network.SetLearningRate(0.5);
  const std::vector<double> before = weightsOf(network);
  network.learn({}, 0);
  network.learnConvex({}, {});
  network.classify({}, {});
  network.classifyConvex({}, {});
  network.SetLearningRate(0.4);
  EXPECT_EQ(weightsOf(network), before);
}

TEST(SampleBlocks, ABlockOfAnotherLengthIsRefused) {
  CompetitiveNetwork network;
  presentations::create(network, 3, inputs, false);
  const std::vector<double> values(7);
  std::vector<std::int32_t> found(2);
  EXPECT_THROW(network.learn(values, 2), Failure);
  EXPECT_THROW(network.learn(values, -1), Failure);
  EXPECT_THROW(network.learnConvex(values, std::vector{1.0, 1.0}), Failure);
  EXPECT_THROW(network.classify(values, found), Failure);
  EXPECT_THROW(network.classifyConvex(values, found), Failure);
}

}  // namespace
}  // namespace mervane
