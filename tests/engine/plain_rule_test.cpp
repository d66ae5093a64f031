#include "tests/engine/plain_rule.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/competitive_network.h"
#include "tests/engine/presentations.h"

namespace mervane {
namespace {

using Place = tests::PlainRule::Place;

/// One training on both, compared after every epoch, bit by bit.
struct Case {
  std::int32_t units;
  std::int32_t inputs;
  std::int32_t rows;
  bool convex = false;
  bool alike = true;          ///< all units start at one place
  std::int32_t radius = -1;   ///< kept through the training; -1 for one that falls with the rate
  std::int32_t outliers = 0;  ///< rows far from all others
  std::int32_t epochs = 60;
};

std::vector<double> valuesOf(const Case& given, std::uint64_t seed) {
  std::vector<double> values = presentations::samples(given.rows, given.inputs, seed);
  for (std::int32_t i = 0; i < given.outliers; ++i)
    values[static_cast<std::size_t>(i * given.inputs)] += 20.0 + 7.0 * i;
  return values;
}

void expectSame(const CompetitiveNetwork& network, const tests::PlainRule& plain, const std::string& when) {
  Place expected;
  for (const Place& one : plain.weights) expected.insert(expected.end(), one.begin(), one.end());
  ASSERT_EQ(Place(network.weights().begin(), network.weights().end()), expected) << when;
}

void compare(const Case& given, std::uint64_t seed) {
  SCOPED_TRACE(std::to_string(given.units) + " units, " + std::to_string(given.inputs) + " inputs, " +
               std::to_string(given.rows) + " rows, convex " + std::to_string(given.convex) + ", seed " +
               std::to_string(seed));
  const auto inputs = static_cast<std::size_t>(given.inputs);
  const double start = given.convex ? 1.0 / std::sqrt(static_cast<double>(inputs)) : 0.3;
  std::vector<Place> places(static_cast<std::size_t>(given.units), Place(inputs, start));
  CompetitiveNetwork network;
  presentations::create(network, given.units, given.inputs, given.convex);
  if (!given.alike) {
    for (std::int32_t unit = 0; unit < given.units; ++unit) {
      for (std::int32_t j = 0; j < given.inputs; ++j) {
        const double value = 0.1 * unit + 0.05 * j;
        static_cast<void>(network.SetWeight(value, 0, unit, j));
        places[static_cast<std::size_t>(unit)][static_cast<std::size_t>(j)] = value;
      }
    }
    network.FinishWeightSetup();
  }
  tests::PlainRule plain(inputs, places);

  const std::vector<double> values = valuesOf(given, seed);
  const bench::Schedule schedule{given.epochs, given.rows};
  const auto sampleOf = [&](std::size_t row) {
    const auto first = values.begin() + static_cast<std::ptrdiff_t>(row * inputs);
    return Place(first, first + given.inputs);
  };
  for (std::int32_t epoch = 1; epoch <= given.epochs; ++epoch) {
    const std::int32_t radius = given.radius < 0 ? schedule.radius(epoch) : given.radius;
    network.SetLearningRate(schedule.rate(epoch));
    network.SetRadius(radius);
    plain.setRate(schedule.rate(epoch));
    plain.setRadius(radius);
    expectSame(network, plain, "before epoch " + std::to_string(epoch));
    if (testing::Test::HasFatalFailure()) return;
    presentations::learnSingly(network, values, inputs, given.convex, schedule, epoch);
    for (std::size_t row = 0; row < static_cast<std::size_t>(given.rows); ++row) {
      plain.learn(sampleOf(row), given.convex ? schedule.convexFactor(epoch, static_cast<std::int32_t>(row)) : 1.0);
    }
  }
  const std::vector<std::int32_t> winners = presentations::winners(network, values, inputs);
  plain.finish();
  for (std::size_t row = 0; row < winners.size(); ++row) {
    EXPECT_EQ(static_cast<std::size_t>(winners[row]), plain.winner(sampleOf(row))) << "row " << row;
  }
  expectSame(network, plain, "at the end");
}

TEST(PlainRule, TheNetworkGivesTheBitsOfPlainLoopsForEverySizeInBothModes) {
  for (const bool convex : {false, true}) {
    for (const std::int32_t units : {1, 2, 3, 5, 9}) {
      for (const std::int32_t inputs : {1, 2, 3, 7}) {
        compare({.units = units, .inputs = inputs, .rows = 23, .convex = convex}, 1);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

TEST(PlainRule, TheNetworkGivesTheBitsOfPlainLoopsWhereUnitsStartApartOrRowsLieFarOff) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    for (const std::int32_t radius : {-1, 0, 1, 100}) {
      compare({.units = 6, .inputs = 2, .rows = 40, .alike = false, .radius = radius}, seed);
      compare({.units = 7, .inputs = 2, .rows = 40, .radius = radius, .outliers = 3}, seed);
      compare({.units = 12, .inputs = 1, .rows = 9, .alike = false, .radius = radius}, seed);
      compare({.units = 4, .inputs = 2, .rows = 30, .convex = true, .radius = radius, .outliers = 2}, seed);
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(PlainRule, TheNetworkGivesTheBitsOfPlainLoopsInALongTrainingWithManyTrials) {
  compare({.units = 4, .inputs = 2, .rows = 24, .epochs = 400}, 1);
  compare({.units = 3, .inputs = 1, .rows = 12, .alike = false, .radius = 0, .epochs = 300}, 2);
  compare({.units = 5, .inputs = 3, .rows = 50, .convex = true, .outliers = 1, .epochs = 400}, 3);
}

}  // namespace
}  // namespace mervane
