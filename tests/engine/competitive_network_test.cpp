#include "engine/competitive_network.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <vector>

#include "engine/create_network_engine.h"
#include "tests/engine/presentations.h"

namespace mervane {
namespace {

/// A network with the given start weights, row by row.
void createWith(CompetitiveNetwork& network, const std::vector<std::vector<double>>& weights,
                std::int32_t activation = 3) {
  const std::int32_t counts[] = {static_cast<std::int32_t>(weights.size())};
  network.Create(1, static_cast<std::int32_t>(weights[0].size()), counts, 0.3, activation);
  for (std::size_t unit = 0; unit < weights.size(); ++unit)
    for (std::size_t j = 0; j < weights[unit].size(); ++j)
      network.SetWeight(weights[unit][j], 0, static_cast<std::int32_t>(unit), static_cast<std::int32_t>(j));
  network.FinishWeightSetup();
}

std::vector<double> weightsOf(const CompetitiveNetwork& network) {
  return {network.weights().begin(), network.weights().end()};
}

void learnOne(CompetitiveNetwork& network, const std::vector<double>& sample) {
  network.SetInputs(sample);
  network.Propagate();
  network.AdjustWeights();
}

std::int32_t winnerOf(CompetitiveNetwork& network, const std::vector<double>& sample) {
  network.SetInputs(sample);
  network.Propagate();
  return network.GetWinner();
}

TEST(CompetitiveNetwork, TheFactoryMakesANewOneOnEachCall) {
  const auto first = createNetworkEngine();
  const auto second = createNetworkEngine();
  ASSERT_TRUE(first && second);
  EXPECT_NE(first, second);
  EXPECT_NE(first->blocks(), nullptr);
}

TEST(CompetitiveNetwork, TheGridHasARowForEachUnitAndAColumnForEachInput) {
  CompetitiveNetwork network;
  presentations::create(network, 5, 2, false);
  EXPECT_EQ(network.GetWeightRows(), 5);
  EXPECT_EQ(network.GetWeightColumns(), 2);
}

TEST(CompetitiveNetwork, ConvexWeightsStartAtOneOverTheRootOfTheInputs) {
  CompetitiveNetwork network;
  presentations::create(network, 3, 4, true);
  EXPECT_EQ(weightsOf(network), std::vector<double>(12, 0.5));
}

TEST(CompetitiveNetwork, StartWeightsThatDifferAreKept) {
  CompetitiveNetwork network;
  createWith(network, {{0.1, 0.2}, {0.8, 0.9}});
  EXPECT_EQ(weightsOf(network), (std::vector{0.1, 0.2, 0.8, 0.9}));
  EXPECT_EQ(winnerOf(network, {0.7, 0.7}), 1);
  EXPECT_EQ(winnerOf(network, {0.0, 0.3}), 0);
}

TEST(CompetitiveNetwork, UnitsThatStartAlikeArePartedInBothModes) {
  const std::vector<double> values{0.1, 0.1, 0.9, 0.9, 0.1, 0.2, 0.9, 0.8, 0.2, 0.1, 0.8, 0.9};
  for (const bool convex : {false, true}) {
    CompetitiveNetwork network;
    presentations::create(network, 2, 2, convex);
    presentations::train(network, values, 2, convex);
    const std::vector<std::int32_t> found = presentations::winners(network, values, 2);
    EXPECT_EQ(std::set(found.begin(), found.end()).size(), 2U) << "convex " << convex;
    for (std::size_t i = 2; i < found.size(); ++i) EXPECT_EQ(found[i], found[i - 2]) << "convex " << convex;
  }
}

TEST(CompetitiveNetwork, EveryUnitFindsRowsWhereThereAreEnough) {
  const std::vector<double> values = presentations::samples(60, 3);
  for (const bool convex : {false, true}) {
    for (std::int32_t units = 2; units <= 20; ++units) {
      CompetitiveNetwork network;
      presentations::create(network, units, 3, convex);
      presentations::train(network, values, 3, convex);
      const std::vector<std::int32_t> found = presentations::winners(network, values, 3);
      EXPECT_EQ(std::set(found.begin(), found.end()).size(), static_cast<std::size_t>(units)) << "convex " << convex;
    }
  }
}

TEST(CompetitiveNetwork, TheSameCallsGiveTheSameBits) {
  const std::vector<double> values = presentations::samples(120, 4);
  CompetitiveNetwork first;
  CompetitiveNetwork second;
  for (CompetitiveNetwork* network : {&first, &second}) {
    presentations::create(*network, 6, 4, true);
    presentations::train(*network, values, 4, true);
  }
  EXPECT_EQ(weightsOf(first), weightsOf(second));
}

TEST(CompetitiveNetwork, CreateAgainForgetsTheNetworkBefore) {
  const std::vector<double> values = presentations::samples(50, 2);
  CompetitiveNetwork used;
  presentations::create(used, 7, 5, false);
  presentations::train(used, presentations::samples(30, 5, 3), 5, false, 13);
  CompetitiveNetwork fresh;
  for (CompetitiveNetwork* network : {&used, &fresh}) {
    presentations::create(*network, 3, 2, true);
    presentations::train(*network, values, 2, true);
  }
  EXPECT_EQ(weightsOf(used), weightsOf(fresh));
}

TEST(CompetitiveNetwork, CreateAfterDestroyNetworkBuildsANewOne) {
  CompetitiveNetwork network;
  presentations::create(network, 7, 5, false);
  network.DestroyNetwork();
  presentations::create(network, 2, 1, false);
  EXPECT_EQ(network.GetWeightRows(), 2);
}

TEST(CompetitiveNetwork, TiesGoToTheLowestIndex) {
  CompetitiveNetwork network;
  createWith(network, {{5.0}, {0.0}, {2.0}, {2.0}});
  EXPECT_EQ(winnerOf(network, {1.0}), 1);
  EXPECT_EQ(winnerOf(network, {2.0}), 2);
  EXPECT_EQ(winnerOf(network, {3.5}), 0);
}

TEST(CompetitiveNetwork, OneLearnedSampleMovesTheWinnerByTheRateTimesTheGap) {
  CompetitiveNetwork network;
  createWith(network, {{0.0, 1.0}, {10.0, 1.0}});
  network.SetLearningRate(0.25);
  network.SetRadius(0);
  learnOne(network, {2.0, 3.0});
  EXPECT_EQ(winnerOf(network, {2.0, 3.0}), 0);
  EXPECT_EQ(weightsOf(network), (std::vector{0.5, 1.5, 10.0, 1.0}));
}

TEST(CompetitiveNetwork, NeighboursMoveLessTheFartherTheyStandInTheRow) {
  CompetitiveNetwork network;
  createWith(network, {{0.0}, {10.0}, {20.0}, {30.0}, {40.0}});
  network.SetLearningRate(0.5);
  network.SetRadius(2);
  learnOne(network, {-1.0});
  network.SetRadius(2);
  const std::vector<double> after = weightsOf(network);
  const auto share = [&](std::size_t unit) {
    const double before = 10.0 * static_cast<double>(unit);
    return (before - after[unit]) / (before + 1.0);
  };
  EXPECT_DOUBLE_EQ(share(0), 0.5);
  EXPECT_LT(share(1), share(0));
  EXPECT_LT(share(2), share(1));
  EXPECT_GT(share(2), 0.0);
  EXPECT_EQ(after[3], 30.0);
  EXPECT_EQ(after[4], 40.0);
}

TEST(CompetitiveNetwork, ARateOfZeroChangesNothing) {
  CompetitiveNetwork network;
  createWith(network, {{0.0}, {10.0}, {10.0}});
  for (const double rate : {0.0, -0.5}) {
    network.SetLearningRate(rate);
    network.SetRadius(2);
    learnOne(network, {4.0});
    network.learn(std::vector{7.0, 8.0}, 2);
    network.SetLearningRate(rate);
    EXPECT_EQ(winnerOf(network, {9.0}), 1);
    EXPECT_EQ(weightsOf(network), (std::vector{0.0, 10.0, 10.0}));
  }
}

TEST(CompetitiveNetwork, TrainingAtRateAndRadiusZeroFromTheStartIsHarmless) {
  for (const bool convex : {false, true}) {
    CompetitiveNetwork network;
    presentations::create(network, 3, 2, convex);
    const std::vector<double> before = weightsOf(network);
    presentations::train(network, presentations::samples(10, 2), 2, convex, 1);
    EXPECT_EQ(presentations::winners(network, presentations::samples(10, 2), 2), std::vector<std::int32_t>(10, 0));
    EXPECT_EQ(weightsOf(network), before);
  }
}

TEST(CompetitiveNetwork, ARateAboveOneCountsAsOne) {
  CompetitiveNetwork network;
  createWith(network, {{0.0}, {10.0}});
  network.SetLearningRate(7.0);
  learnOne(network, {3.0});
  network.SetLearningRate(0.0);
  EXPECT_EQ(weightsOf(network), (std::vector{3.0, 10.0}));
}

TEST(CompetitiveNetwork, ANegativeRadiusCountsAsZeroAndAHugeOneReachesAllUnits) {
  CompetitiveNetwork network;
  createWith(network, {{0.0}, {10.0}, {20.0}});
  network.SetLearningRate(0.5);
  network.SetRadius(-3);
  learnOne(network, {-1.0});
  network.SetRadius(std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(weightsOf(network), (std::vector{-0.5, 10.0, 20.0}));
  learnOne(network, {-1.0});
  network.SetRadius(0);
  EXPECT_LT(weightsOf(network)[1], 10.0);
  EXPECT_LT(weightsOf(network)[2], 20.0);
}

TEST(CompetitiveNetwork, AConvexSampleIsMixedWithTheStartWeight) {
  CompetitiveNetwork network;
  createWith(network, {{0.5, 0.5, 0.5, 0.5}, {9.0, 9.0, 9.0, 9.0}});
  network.SetLearningRate(1.0);
  network.SetConvexInputs(std::vector{1.0, 2.0, 3.0, 4.0}, 0.25, 0);
  network.Propagate();
  network.AdjustWeights();
  network.SetLearningRate(0.0);
  // F x + (1 - F) / sqrt(4)
  EXPECT_EQ(weightsOf(network), (std::vector{0.625, 0.875, 1.125, 1.375, 9.0, 9.0, 9.0, 9.0}));
}

TEST(CompetitiveNetwork, AConvexFactorAboveOneCountsAsOneAndBelowZeroAsZero) {
  const auto learned = [](double factor) {
    CompetitiveNetwork network;
    createWith(network, {{0.5}, {900.0}});
    network.SetLearningRate(1.0);
    network.SetConvexInputs(std::vector{3.0}, factor, 0);
    network.Propagate();
    network.AdjustWeights();
    network.SetLearningRate(0.0);
    return network.weights()[0];
  };
  EXPECT_EQ(learned(1.0), 3.0);
  EXPECT_EQ(learned(3.0294), 3.0);
  EXPECT_EQ(learned(std::numeric_limits<double>::infinity()), 3.0);
  EXPECT_EQ(learned(-2.0), 1.0);
  EXPECT_EQ(learned(0.0), 1.0);
}

TEST(CompetitiveNetwork, EveryActivationNumberGivesTheSameClusters) {
  const std::vector<double> values = presentations::samples(80, 3);
  std::vector<std::int32_t> expected;
  for (const std::int32_t activation : {0, 1, 2, 3, 4, 5, -1, std::numeric_limits<std::int32_t>::max()}) {
    CompetitiveNetwork network;
    const std::int32_t counts[] = {6};
    network.Create(1, 3, counts, 0.3, activation);
    network.InitConvexWeights();
    presentations::train(network, values, 3, true);
    const std::vector<std::int32_t> found = presentations::winners(network, values, 3);
    if (expected.empty()) expected = found;
    EXPECT_EQ(found, expected) << "activation " << activation;
  }
}

TEST(CompetitiveNetwork, ResponsesFallWithTheDistanceAndNeverSpoilTheSearch) {
  for (const std::int32_t activation : {0, 1, 2, 3, 4, 99, -1}) {
    CompetitiveNetwork network;
    createWith(network, {{3.0}, {0.5}, {0.0}, {100.0}, {90.0}}, activation);
    EXPECT_EQ(winnerOf(network, {0.0}), 2);
    EXPECT_GT(network.response(2), network.response(1)) << "activation " << activation;
    EXPECT_GE(network.response(1), network.response(0)) << "activation " << activation;
    EXPECT_GE(network.response(0), network.response(3)) << "activation " << activation;
    // So far away that some functions are 0 for all of them: the nearest wins all the same.
    EXPECT_EQ(winnerOf(network, {1e6}), 3);
  }
}

TEST(CompetitiveNetwork, ActivationNumbersSelectTheDocumentedFunctions) {
  const auto response = [](std::int32_t activation, double place) {
    CompetitiveNetwork network;
    createWith(network, {{place}, {1e9}}, activation);
    winnerOf(network, {0.0});
    return network.response(0);
  };
  EXPECT_DOUBLE_EQ(response(0, 2.0), -4.0);
  EXPECT_DOUBLE_EQ(response(1, 0.5), 0.75);
  EXPECT_DOUBLE_EQ(response(1, 2.0), 0.0);
  EXPECT_DOUBLE_EQ(response(2, 0.5), 1.0 - std::tanh(0.25));
  EXPECT_DOUBLE_EQ(response(3, 2.0), std::exp(-2.0));
  EXPECT_DOUBLE_EQ(response(4, 2.0), std::exp(-4.0));
  EXPECT_DOUBLE_EQ(response(7, 2.0), -4.0);
}

TEST(CompetitiveNetwork, OneUnitTakesEverything) {
  for (const bool convex : {false, true}) {
    CompetitiveNetwork network;
    presentations::create(network, 1, 2, convex);
    const std::vector<double> values = presentations::samples(20, 2);
    presentations::train(network, values, 2, convex);
    EXPECT_EQ(presentations::winners(network, values, 2), std::vector<std::int32_t>(20, 0));
  }
}

TEST(CompetitiveNetwork, FewerRowsThanUnitsGiveEachRowItsOwn) {
  const std::vector<double> values{0.1, 0.2, 0.9, 0.1, 0.5, 0.9, 0.2, 0.8};
  for (const bool convex : {false, true}) {
    CompetitiveNetwork network;
    presentations::create(network, 9, 2, convex);
    presentations::train(network, values, 2, convex);
    const std::vector<std::int32_t> found = presentations::winners(network, values, 2);
    EXPECT_EQ(std::set(found.begin(), found.end()).size(), 4U) << "convex " << convex;
  }
}

TEST(CompetitiveNetwork, RowsThatAreAllAlikeShareOneUnit) {
  const std::vector<double> values(30, 0.4);
  for (const bool convex : {false, true}) {
    CompetitiveNetwork network;
    presentations::create(network, 4, 3, convex);
    presentations::train(network, values, 3, convex);
    const std::vector<std::int32_t> found = presentations::winners(network, values, 3);
    EXPECT_EQ(std::set(found.begin(), found.end()).size(), 1U) << "convex " << convex;
  }
}

TEST(CompetitiveNetwork, ATrainingThatIsStoppedShowsItsLastPassInTheWinners) {
  const std::vector<double> values = presentations::samples(40, 2);
  const bench::Schedule schedule{100, 40};
  for (std::int32_t stop = 1; stop <= 100; ++stop) {
    CompetitiveNetwork network;
    presentations::create(network, 4, 2, false);
    for (std::int32_t epoch = 1; epoch <= stop; ++epoch) {
      network.SetLearningRate(schedule.rate(epoch));
      network.SetRadius(schedule.radius(epoch));
      presentations::learnSingly(network, values, 2, false, schedule, epoch);
    }
    const std::vector<std::int32_t> found = presentations::winners(network, values, 2);
    EXPECT_GT(std::set(found.begin(), found.end()).size(), 1U) << "stopped after epoch " << stop;
    EXPECT_EQ(presentations::winners(network, values, 2), found);
  }
}

}  // namespace
}  // namespace mervane
