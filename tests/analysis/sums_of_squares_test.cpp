#include "analysis/sums_of_squares.h"

#include <gtest/gtest.h>

namespace mervane::analysis {
namespace {

// Two clusters on a line, 0 and 2 against 10 and 14: means 1 and 12, overall mean 6.5.
const std::vector<double> line{0.0, 2.0, 10.0, 14.0};
const std::vector<std::int32_t> halves{1, 1, 2, 2};

TEST(SumsOfSquares, WithinAndBetweenAddUpToTotal) {
  const SumsOfSquares sums = sumsOfSquares({line, 1}, halves, 2);
  EXPECT_DOUBLE_EQ(sums.within, 2.0 + 8.0);
  EXPECT_DOUBLE_EQ(sums.between, 4 * 5.5 * 5.5);
  EXPECT_DOUBLE_EQ(sums.total, 131.0);
  EXPECT_EQ(sums.withinOfCluster, (std::vector<double>{2.0, 8.0}));
}

TEST(SumsOfSquares, AnEmptyClusterHasNoScatterAndTheMeanZero) {
  const SumsOfSquares sums = sumsOfSquares({line, 1}, halves, 3);
  EXPECT_EQ(sums.withinOfCluster, (std::vector<double>{2.0, 8.0, 0.0}));
  EXPECT_EQ(clusterMeans({line, 1}, halves, 3), (std::vector<double>{1.0, 12.0, 0.0}));
  EXPECT_EQ(clusterSizes(halves, 3), (std::vector<std::int64_t>{2, 2, 0}));
}

TEST(SumsOfSquares, ASampleWithoutAClusterIsLeftOut) {
  const std::vector<std::int32_t> labels{1, 1, 0, 3};
  const SumsOfSquares sums = sumsOfSquares({line, 1}, labels, 2);
  EXPECT_DOUBLE_EQ(sums.within, 2.0);
  EXPECT_DOUBLE_EQ(sums.between, 0.0);
  EXPECT_DOUBLE_EQ(sums.total, 2.0);
  EXPECT_EQ(clusterSizes(labels, 2), (std::vector<std::int64_t>{2, 0}));
}

TEST(SumsOfSquares, MeansAreTakenColumnByColumn) {
  const std::vector<double> plane{0.0, 1.0, 2.0, 3.0, 5.0, 5.0};
  const std::vector<std::int32_t> labels{1, 1, 2};
  EXPECT_EQ(clusterMeans({plane, 2}, labels, 2), (std::vector<double>{1.0, 2.0, 5.0, 5.0}));
}

TEST(SumsOfSquares, NoSamplesGiveZeros) {
  const SumsOfSquares sums = sumsOfSquares({{}, 2}, {}, 2);
  EXPECT_EQ(sums.within, 0.0);
  EXPECT_EQ(sums.between, 0.0);
  EXPECT_EQ(sums.total, 0.0);
}

}  // namespace
}  // namespace mervane::analysis
