#include "engine/learning_rule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>
#include <vector>

#include "engine/choose_kernel.h"
#include "tests/engine/presentations.h"

namespace mervane::engine {
namespace {

const Kernel& kernel() {
  return chooseKernel(1, 1);
}

TEST(StartAxis, PlacesUnitsAlongTheLongestDirectionOfTheData) {
  StartAxis axis(2);
  for (int i = -50; i <= 50; ++i) axis.add(std::vector{1.0 + 3.0 * i, 2.0 - 4.0 * i + (i % 2 == 0 ? 0.1 : -0.1)});
  std::vector<double> first(2);
  std::vector<double> middle(2);
  std::vector<double> last(2);
  axis.place(0, 3, first);
  axis.place(1, 3, middle);
  axis.place(2, 3, last);
  EXPECT_NEAR(middle[0], 1.0, 1e-6);
  EXPECT_NEAR(middle[1], 2.0, 0.01);
  EXPECT_NEAR((last[1] - first[1]) / (last[0] - first[0]), -4.0 / 3.0, 0.01);
  EXPECT_GT(std::abs(last[0] - first[0]), 60.0);
}

TEST(StartAxis, PlacesAllUnitsAtTheMeanWhereTheDataHasNoExtent) {
  StartAxis axis(1);
  for (int i = 0; i < 5; ++i) axis.add(std::vector{0.25});
  std::vector<double> place(1);
  for (std::int32_t unit = 0; unit < 4; ++unit) {
    axis.place(unit, 4, place);
    EXPECT_EQ(place[0], 0.25);
  }
}

TEST(NeighbourhoodUpdate, AUnitCoversTheWayOfAsManySingleStepsAsItHasSamples) {
  EpochRecord record(2, 1);
  for (int i = 0; i < 3; ++i) record.add(0, 1.0, std::vector{8.0});
  std::vector<double> weights{0.0, 5.0};
  NeighbourhoodUpdate().apply(record, {0, 0.0}, 0.5, 2, 1, weights);
  EXPECT_EQ(weights, (std::vector{7.0, 5.0}));
}

TEST(NeighbourhoodUpdate, ManySamplesLeadToTheirMean) {
  EpochRecord record(1, 1);
  for (int i = 0; i < 1000; ++i) record.add(0, 1.0, std::vector{i % 2 == 0 ? 1.0 : 3.0});
  std::vector<double> weights{100.0};
  NeighbourhoodUpdate().apply(record, {0, 0.0}, 0.2, 1, 1, weights);
  EXPECT_DOUBLE_EQ(weights[0], 2.0);
}

TEST(Relocation, AUnitWithoutSamplesGoesToTheFarthestSampleOfTheWorstUnit) {
  Relocation relocation(3, 1);
  EpochRecord record(3, 1);
  record.add(0, 0.01, std::vector{0.1});
  record.add(1, 4.0, std::vector{7.0});
  record.add(1, 1.0, std::vector{6.0});
  std::vector<double> weights{0.1, 5.0, 99.0};
  relocation.epochEnded(record, weights);
  EXPECT_EQ(weights, (std::vector{0.1, 5.0, 7.0}));
}

TEST(Relocation, UnitsWithoutSamplesStayWhereEverySampleIsMatched) {
  Relocation relocation(2, 1);
  EpochRecord record(2, 1);
  record.add(0, 0.0, std::vector{0.1});
  std::vector<double> weights{0.1, 99.0};
  relocation.epochEnded(record, weights);
  EXPECT_EQ(weights, (std::vector{0.1, 99.0}));
}

/// Three units on four samples: two share a place, one lies between two far groups.
EpochRecord settledRecord() {
  EpochRecord record(3, 1);
  for (int i = 0; i < 5; ++i) {
    record.add(0, 0.0001, std::vector{0.01});
    record.add(1, 0.0001, std::vector{0.03});
    record.add(2, 4.0, std::vector{8.0});
    record.add(2, 4.0, std::vector{12.0});
  }
  return record;
}

TEST(Relocation, ASettledMapTriesItsLeastMissedUnitBesideTheWorst) {
  Relocation relocation(3, 1);
  std::vector<double> weights{0.02, 0.02, 10.0};
  relocation.epochEnded(settledRecord(), weights);
  EXPECT_EQ(weights, (std::vector{0.02, 0.02, 10.0}));
  relocation.epochEnded(settledRecord(), weights);
  EXPECT_EQ(weights, (std::vector{9.0, 0.02, 10.0}));
}

TEST(Relocation, ATrialThatDoesNotPayGoesBackAndIsNotRepeated) {
  Relocation relocation(3, 1);
  const std::vector<double> settled{0.02, 0.02, 10.0};
  std::vector<double> weights = settled;
  relocation.epochEnded(settledRecord(), weights);
  relocation.epochEnded(settledRecord(), weights);
  const std::vector<double> firstTrial = weights;
  ASSERT_NE(firstTrial, settled);
  for (int epoch = 0; epoch < 5; ++epoch) relocation.epochEnded(settledRecord(), weights);
  EXPECT_NE(weights, firstTrial);
  relocation.settle(weights);
  EXPECT_EQ(weights, settled);
}

TEST(Relocation, ATrialThatPaysIsKept) {
  Relocation relocation(3, 1);
  std::vector<double> weights{0.02, 0.02, 10.0};
  relocation.epochEnded(settledRecord(), weights);
  relocation.epochEnded(settledRecord(), weights);
  EpochRecord better(3, 1);
  better.add(0, 0.5, std::vector{8.0});
  better.add(1, 0.0, std::vector{0.02});
  better.add(2, 0.5, std::vector{12.0});
  weights = {8.0, 0.02, 12.0};
  relocation.epochEnded(better, weights);
  relocation.settle(weights);
  EXPECT_EQ(weights, (std::vector{8.0, 0.02, 12.0}));
}

TEST(Relocation, MapsTooLargeForTrialsStillMoveIdleUnits) {
  constexpr std::int32_t units = 1100;
  Relocation relocation(units, 1);
  EpochRecord record(units, 1);
  for (std::int32_t unit = 1; unit < units; ++unit) record.add(unit, 1.0 + unit, std::vector{2.0 * unit});
  std::vector<double> weights(units);
  std::iota(weights.begin(), weights.end(), 0.0);
  for (int epoch = 0; epoch < 4; ++epoch) relocation.epochEnded(record, weights);
  EXPECT_EQ(weights[0], 2.0 * (units - 1));
  EXPECT_EQ(weights[5], 5.0);
}

/// Rows of four groups, in the order of `order`.
std::vector<double> grouped(const std::vector<int>& order) {
  std::vector<double> values;
  for (const int row : order) {
    values.push_back(0.9 * (row % 4 / 2) + 0.001 * (row % 7));
    values.push_back(0.9 * (row % 2) + 0.001 * (row % 5));
  }
  return values;
}

std::vector<std::int32_t> clustersOf(const std::vector<double>& values, bool convex) {
  LearningRule rule(4, 2, 1.0 / std::sqrt(2.0), kernel());
  const auto rows = static_cast<std::int32_t>(values.size() / 2);
  const bench::Schedule schedule{100, rows};
  for (std::int32_t epoch = 1; epoch <= 100; ++epoch) {
    rule.setRate(schedule.rate(epoch));
    rule.setRadius(schedule.radius(epoch));
    std::vector<double> factors;
    for (std::int32_t row = 0; convex && row < rows && schedule.convexFactor(epoch, 0) < 1.0; ++row)
      factors.push_back(std::min(schedule.convexFactor(epoch, row), 1.0));
    rule.learn(values, static_cast<std::size_t>(rows), factors);
  }
  rule.finish();
  std::vector<std::int32_t> winners(static_cast<std::size_t>(rows));
  rule.search(values, winners);
  return winners;
}

TEST(LearningRule, FindsTheGroupsInWhateverOrderTheRowsCome) {
  std::vector<int> mixed(80);
  std::iota(mixed.begin(), mixed.end(), 0);
  std::vector<int> sorted = mixed;
  std::ranges::stable_sort(sorted, {}, [](int row) { return row % 4; });
  std::vector<int> backwards(sorted.rbegin(), sorted.rend());
  for (const bool convex : {false, true}) {
    for (const std::vector<int>& order : {mixed, sorted, backwards}) {
      const std::vector<std::int32_t> winners = clustersOf(grouped(order), convex);
      std::set<std::pair<int, std::int32_t>> pairs;
      for (std::size_t i = 0; i < order.size(); ++i) pairs.insert({order[i] % 4, winners[i]});
      EXPECT_EQ(pairs.size(), 4U) << "a group is split or two are joined; convex " << convex;
      EXPECT_EQ(std::set(winners.begin(), winners.end()).size(), 4U);
    }
  }
}

TEST(LearningRule, KeepsUnitsWithoutTrialsOpenAtTheEnd) {
  const std::vector<double> values = presentations::samples(50, 2);
  LearningRule rule(5, 2, 0.3, kernel());
  rule.setRate(0.5);
  for (int epoch = 0; epoch < 30; ++epoch) {
    rule.learn(values, 50, {});
    rule.setRate(0.2);
  }
  rule.finish();
  const std::vector<double> once(rule.weights().begin(), rule.weights().end());
  rule.finish();
  EXPECT_EQ(once, std::vector(rule.weights().begin(), rule.weights().end()));
}

}  // namespace
}  // namespace mervane::engine
