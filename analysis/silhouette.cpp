#include "analysis/silhouette.h"

#include <algorithm>
#include <cmath>

#include "analysis/sums_of_squares.h"

namespace mervane::analysis {
namespace {

/// The finaliser of splitmix64 (Steele, Lea and Flood 2014): every bit of the result depends on every bit given.
std::uint64_t mixed(std::uint64_t value) {
  value += 0x9E3779B97F4A7C15U;
  value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
  value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
  return value ^ (value >> 31U);
}

/// The value of one sample out of the sums of its distances to the samples of each cluster.
double valueOf(std::span<const double> distanceSums, const std::vector<std::int64_t>& sizes, std::size_t own) {
  if (sizes[own] < 2) return 0.0;
  const double a = distanceSums[own] / static_cast<double>(sizes[own] - 1);
  double b = -1.0;
  for (std::size_t cluster = 0; cluster < sizes.size(); ++cluster) {
    if (cluster == own) continue;
    const double mean = distanceSums[cluster] / static_cast<double>(sizes[cluster]);
    if (b < 0.0 || mean < b) b = mean;
  }
  const double larger = std::max(a, b);
  return larger > 0.0 ? (b - a) / larger : 0.0;
}

/// Gives the clusters that occur the numbers 1, 2, 3, ... in their order, and tells how many there are. The work for
/// each sample then grows with these, and not with a number of clusters that may be far above that of the samples.
std::int32_t renumber(std::vector<std::int32_t>& labels) {
  std::vector<std::int32_t> occurring = labels;
  std::ranges::sort(occurring);
  occurring.erase(std::unique(occurring.begin(), occurring.end()), occurring.end());
  for (std::int32_t& label : labels) {
    label = static_cast<std::int32_t>(std::ranges::lower_bound(occurring, label) - occurring.begin()) + 1;
  }
  return static_cast<std::int32_t>(occurring.size());
}

}  // namespace

std::vector<std::size_t> silhouetteRows(std::size_t rows) {
  std::vector<std::size_t> chosen;
  if (rows <= silhouetteExactLimit) {
    for (std::size_t row = 0; row < rows; ++row) chosen.push_back(row);
    return chosen;
  }
  // The remainder is spread over the slices without a product that could leave 64 bits.
  const std::size_t length = rows / silhouetteExactLimit;
  const std::size_t longer = rows % silhouetteExactLimit;
  std::size_t begin = 0;
  for (std::size_t slice = 0; slice < silhouetteExactLimit; ++slice) {
    const std::size_t here = length + (slice < longer ? 1 : 0);
    chosen.push_back(begin + static_cast<std::size_t>(mixed(slice) % here));
    begin += here;
  }
  return chosen;
}

Silhouette silhouette(const Samples& samples, Labels labels, std::int32_t clusters) {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < labels.size(); ++row) {
    if (isCluster(labels[row], clusters)) rows.push_back(row);
  }
  const std::size_t all = rows.size();
  std::vector<std::size_t> chosen = silhouetteRows(all);
  std::vector<std::int32_t> own;
  for (std::size_t& one : chosen) {
    one = rows[one];
    own.push_back(labels[one]);
  }
  const std::int32_t used = renumber(own);
  const std::vector<std::int64_t> sizes = clusterSizes(own, used);

  Silhouette result;
  result.samplesUsed = chosen.size();
  result.sampled = chosen.size() < all;
  if (used < 2) return result;

  std::vector<double> distanceSums(sizes.size());
  double sum = 0.0;
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    std::ranges::fill(distanceSums, 0.0);
    for (std::size_t j = 0; j < chosen.size(); ++j) {
      distanceSums[static_cast<std::size_t>(own[j] - 1)] +=
          std::sqrt(squaredDistance(samples.row(chosen[i]), samples.row(chosen[j])));
    }
    sum += valueOf(distanceSums, sizes, static_cast<std::size_t>(own[i] - 1));
  }
  result.mean = sum / static_cast<double>(chosen.size());
  return result;
}

}  // namespace mervane::analysis
