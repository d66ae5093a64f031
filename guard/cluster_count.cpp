#include "guard/cluster_count.h"

#include "guard/text_display.h"

namespace mervane::guard {

namespace {
constexpr std::int32_t fewestClusters = 2;
constexpr std::int32_t mostSeries = 255;
}  // namespace

std::string clusterCountTrouble(std::int32_t clusters, std::int32_t rows, bool drawsCharts) {
  // Of one row the component says itself that it cannot be clustered.
  if (rows >= fewestClusters && clusters > rows) {
    return decimal(clusters) + " clusters cannot be made of " + counted(rows, "row", "rows") + "; give " +
           (rows == fewestClusters ? "2" : "2 to " + decimal(rows));
  }
  if (drawsCharts && clusters > mostSeries) {
    return "a chart has room for " + decimal(mostSeries) + " clusters, and " + decimal(clusters) +
           " are asked for; give fewer, or switch the charts off";
  }
  return {};
}

}  // namespace mervane::guard
