#include "analysis/silhouette.h"

#include <gtest/gtest.h>

namespace mervane::analysis {
namespace {

TEST(Silhouette, FollowsTheDefinitionOnALine) {
  const std::vector<double> line{0.0, 2.0, 10.0, 14.0};
  const std::vector<std::int32_t> labels{1, 1, 2, 2};
  // a and b by hand: 0: 2, 12; 2: 2, 10; 10: 4, 9; 14: 4, 13.
  const double expected = ((12.0 - 2) / 12 + (10.0 - 2) / 10 + (9.0 - 4) / 9 + (13.0 - 4) / 13) / 4;
  const Silhouette result = silhouette({line, 1}, labels, 2);
  ASSERT_TRUE(result.mean.has_value());
  EXPECT_DOUBLE_EQ(*result.mean, expected);
  EXPECT_EQ(result.samplesUsed, 4U);
  EXPECT_FALSE(result.sampled);
}

TEST(Silhouette, ASampleAloneInItsClusterCountsAsZero) {
  const std::vector<double> line{0.0, 2.0, 10.0};
  const std::vector<std::int32_t> labels{1, 1, 2};
  const Silhouette result = silhouette({line, 1}, labels, 2);
  ASSERT_TRUE(result.mean.has_value());
  EXPECT_DOUBLE_EQ(*result.mean, (8.0 / 10 + 6.0 / 8 + 0.0) / 3);
}

TEST(Silhouette, ASampleInTheWrongClusterIsNegative) {
  const std::vector<double> line{0.0, 10.0, 0.0, 10.0};
  const std::vector<std::int32_t> labels{1, 1, 2, 2};
  const Silhouette result = silhouette({line, 1}, labels, 2);
  ASSERT_TRUE(result.mean.has_value());
  EXPECT_DOUBLE_EQ(*result.mean, -0.5);
}

TEST(Silhouette, IdenticalSamplesInTwoClustersCountAsZero) {
  const std::vector<double> same{1.0, 1.0, 1.0, 1.0};
  const std::vector<std::int32_t> labels{1, 1, 2, 2};
  EXPECT_EQ(silhouette({same, 1}, labels, 2).mean, 0.0);
}

TEST(Silhouette, EmptyClustersChangeNothingHoweverManyThereAre) {
  const std::vector<double> line{0.0, 2.0, 10.0, 14.0};
  const std::vector<std::int32_t> labels{1, 1, 2, 2};
  const std::vector<std::int32_t> spread{7, 7, 2000000000, 2000000000};
  EXPECT_EQ(silhouette({line, 1}, spread, 2147483647).mean, silhouette({line, 1}, labels, 2).mean);
}

TEST(Silhouette, IsNotDefinedForOneCluster) {
  const std::vector<double> line{0.0, 2.0, 10.0};
  const std::vector<std::int32_t> labels{2, 2, 2};
  EXPECT_FALSE(silhouette({line, 1}, labels, 3).mean.has_value());
  EXPECT_FALSE(silhouette({{}, 1}, {}, 3).mean.has_value());
}

TEST(Silhouette, SamplesWithoutAClusterTakeNoPart) {
  const std::vector<double> line{0.0, 2.0, 500.0, 10.0, 14.0};
  const std::vector<std::int32_t> labels{1, 1, 0, 2, 2};
  const std::vector<double> without{0.0, 2.0, 10.0, 14.0};
  const std::vector<std::int32_t> labelsWithout{1, 1, 2, 2};
  EXPECT_EQ(silhouette({line, 1}, labels, 2).mean, silhouette({without, 1}, labelsWithout, 2).mean);
}

TEST(SilhouetteRows, AreAllRowsUpToTheLimit) {
  const std::vector<std::size_t> rows = silhouetteRows(silhouetteExactLimit);
  ASSERT_EQ(rows.size(), silhouetteExactLimit);
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(rows[i], i);
}

TEST(SilhouetteRows, AreOneRowOfEachSliceAboveTheLimit) {
  for (const std::size_t count : {std::size_t{5001}, std::size_t{12345}, std::size_t{65535}, std::size_t{1000000}}) {
    const std::vector<std::size_t> rows = silhouetteRows(count);
    ASSERT_EQ(rows.size(), silhouetteExactLimit);
    for (std::size_t i = 1; i < rows.size(); ++i) EXPECT_LT(rows[i - 1], rows[i]) << count;
    EXPECT_LT(rows.back(), count);
  }
  EXPECT_EQ(silhouetteRows(20000), silhouetteRows(20000));
}

TEST(SilhouetteRows, DoNotFallInStepWithDataThatRepeat) {
  // Rows 0, 4, 8, ... alone would be drawn by an even stride over 20,000 rows.
  std::vector<int> seen(4);
  for (const std::size_t row : silhouetteRows(20000)) ++seen[row % 4];
  for (const int count : seen) EXPECT_GT(count, 1000);
}

TEST(Silhouette, OfALargeSetIsTakenFromTheFixedSample) {
  std::vector<double> line;
  std::vector<std::int32_t> labels;
  for (int i = 0; i < 12000; ++i) {
    labels.push_back(1 + i % 2);
    line.push_back(i % 2 == 0 ? 0.001 * (i % 10) : 5.0 + 0.001 * (i % 7));
  }
  const Silhouette result = silhouette({line, 1}, labels, 2);
  EXPECT_TRUE(result.sampled);
  EXPECT_EQ(result.samplesUsed, silhouetteExactLimit);
  ASSERT_TRUE(result.mean.has_value());
  EXPECT_GT(*result.mean, 0.99);
}

}  // namespace
}  // namespace mervane::analysis
