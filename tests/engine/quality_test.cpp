#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "bench/clustering_quality.h"

/// The goals that the clusters have to meet on the shipped data sets, against the best of 50 k-means runs.
namespace mervane::quality {
namespace {

const std::filesystem::path examples = std::filesystem::path(MERVANE_SOURCE_DIR) / "examples";
constexpr int restarts = 50;

/// Measures every set of the given uses with 2 to 10 clusters.
Summary measure(const std::vector<Use>& uses, bool convex) {
  std::vector<double> ratios;
  for (const ShippedSet& set : shippedSets()) {
    if (std::find(uses.begin(), uses.end(), set.use) == uses.end()) continue;
    const Table raw = readNumbers(examples / set.file);
    const Table rows = scaled(raw);
    for (std::int32_t clusters = 2; clusters <= 10; ++clusters) {
      const Clustering best = byKMeans(rows, clusters, restarts);
      const Clustering own = byComponent(raw, clusters, convex);
      EXPECT_LE(own.empty, best.empty) << set.file << ", " << clusters << " clusters";
      ratios.push_back(ratio(own, best));
    }
  }
  return summary(ratios);
}

void expectGoals(const Summary& found) {
  EXPECT_LE(found.median, 1.01);
  EXPECT_LE(found.ninthDecile, 1.05);
  EXPECT_LE(found.worst, 1.20);
}

TEST(Quality, MeetsTheGoalsOnTheSetsTheRuleWasMadeWith) {
  expectGoals(measure({Use::tuning}, true));
}

TEST(Quality, MeetsTheGoalsOnTheSetsHeldBack) {
  expectGoals(measure({Use::heldBack}, true));
}

TEST(Quality, MeetsTheGoalsWithTheConvexCombinationOff) {
  expectGoals(measure({Use::tuning, Use::heldBack}, false));
}

TEST(Quality, LeavesNoClusterEmptyBesideIsolatedOutliers) {
  EXPECT_LE(measure({Use::apart}, true).worst, 1.20);
}

TEST(Quality, FindsTheSpeciesOfIris) {
  const std::vector<std::int32_t> clusters = byComponent(readNumbers(examples / "iris.csv"), 3).clusters;
  EXPECT_GE(adjustedRand(clusters, readTexts(examples / "iris.csv", "species")), 0.70);
}

TEST(Quality, OneToAHundredFallIntoFourContiguousGroups) {
  Table rows{100, 1, {}};
  for (int i = 1; i <= 100; ++i) rows.values.push_back(i);
  const std::vector<std::int32_t> clusters = byComponent(rows, 4).clusters;
  int changes = 0;
  for (std::size_t i = 1; i < clusters.size(); ++i) changes += clusters[i] != clusters[i - 1] ? 1 : 0;
  EXPECT_EQ(changes, 3);
}

TEST(Quality, TheShippedSetsAreEnoughAndSomeAreHeldBack) {
  int heldBack = 0;
  for (const ShippedSet& set : shippedSets()) heldBack += set.use == Use::heldBack ? 1 : 0;
  EXPECT_GE(shippedSets().size(), 16U);
  EXPECT_GE(heldBack, 5);
}

}  // namespace
}  // namespace mervane::quality
