#include "guard/cluster_count.h"

#include <gtest/gtest.h>

namespace mervane::guard {
namespace {

TEST(ClusterCount, AsManyClustersAsRowsAreTakenAndOneMoreIsRefused) {
  EXPECT_EQ(clusterCountTrouble(150, 150, true), "");
  EXPECT_EQ(clusterCountTrouble(151, 150, false), "151 clusters cannot be made of 150 rows; give 2 to 150");
  EXPECT_EQ(clusterCountTrouble(998, 150, true), "998 clusters cannot be made of 150 rows; give 2 to 150");
  EXPECT_EQ(clusterCountTrouble(3, 2, true), "3 clusters cannot be made of 2 rows; give 2");
}

TEST(ClusterCount, OfOneRowTheComponentSpeaksItself) {
  EXPECT_EQ(clusterCountTrouble(3, 1, true), "");
}

TEST(ClusterCount, AChartHasRoomForOnlySoMany) {
  EXPECT_EQ(clusterCountTrouble(255, 1000, true), "");
  EXPECT_EQ(clusterCountTrouble(256, 1000, false), "");
  EXPECT_EQ(clusterCountTrouble(256, 1000, true),
            "a chart has room for 255 clusters, and 256 are asked for; give fewer, or switch the charts off");
}

}  // namespace
}  // namespace mervane::guard
