#include "analysis/map_errors.h"

#include <gtest/gtest.h>

#include <vector>

namespace mervane::analysis {
namespace {

TEST(MapErrors, QuantisationIsTheMeanDistanceToTheNearestUnit) {
  const std::vector<double> samples{0.0, 0.0, 3.0, 4.0};
  const std::vector<double> units{0.0, 0.0, 3.0, 3.0};
  EXPECT_DOUBLE_EQ(mapErrors({samples, 2}, {units, 2}).quantisation, 0.5);
}

TEST(MapErrors, TopographicCountsSamplesWhoseTwoNearestUnitsAreApart) {
  // Unit order 0, 10, 1: the sample 0.2 has units 1 and 3 nearest, which are not neighbours; the sample 9 has 2 and 3.
  const std::vector<double> samples{0.2, 9.0};
  const std::vector<double> units{0.0, 10.0, 1.0};
  EXPECT_DOUBLE_EQ(mapErrors({samples, 1}, {units, 1}).topographic, 0.5);
}

TEST(MapErrors, AnOrderedMapHasNoTopographicError) {
  const std::vector<double> samples{0.4, 1.2, 2.9, 3.0};
  const std::vector<double> units{0.0, 1.0, 2.0, 3.0};
  EXPECT_EQ(mapErrors({samples, 1}, {units, 1}).topographic, 0.0);
}

TEST(MapErrors, OfUnitsAtTheSameDistanceTheLowerIndexIsNearer) {
  const std::vector<double> sample{0.0};
  const std::vector<double> near{1.0, -1.0, 1.0};
  EXPECT_EQ(mapErrors({sample, 1}, {near, 1}).topographic, 0.0);
}

TEST(MapErrors, OneUnitHasNoTopographicError) {
  const std::vector<double> sample{5.0};
  const std::vector<double> unit{2.0};
  const MapErrors errors = mapErrors({sample, 1}, {unit, 1});
  EXPECT_EQ(errors.topographic, 0.0);
  EXPECT_EQ(errors.quantisation, 3.0);
}

TEST(MapErrors, NoSamplesOrNoUnitsGiveZeros) {
  const std::vector<double> one{5.0};
  EXPECT_EQ(mapErrors({{}, 1}, {one, 1}).quantisation, 0.0);
  EXPECT_EQ(mapErrors({one, 1}, {{}, 1}).quantisation, 0.0);
}

}  // namespace
}  // namespace mervane::analysis
