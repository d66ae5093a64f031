#pragma once

#include <cstdint>
#include <vector>

#include "analysis/samples.h"

namespace mervane::analysis {

/// How the scatter of the samples divides into scatter inside the clusters and scatter of the clusters.
///
/// With m the mean of all samples, m_c the mean of the samples of cluster c and n_c their number:
/// within = sum over c, over the samples x of c, of |x - m_c|^2; between = sum over c of n_c |m_c - m|^2;
/// total = sum over x of |x - m|^2. Apart from rounding, total = within + between (the decomposition of one-way
/// analysis of variance; Everitt et al., Cluster Analysis, 5th edition, section 5.4).
struct SumsOfSquares {
  double within = 0.0;
  double between = 0.0;
  double total = 0.0;
  /// Within of each cluster by itself; index 0 is cluster 1. An empty cluster has 0.
  std::vector<double> withinOfCluster;
};

/// Number of samples of each cluster; index 0 is cluster 1.
[[nodiscard]] std::vector<std::int64_t> clusterSizes(Labels labels, std::int32_t clusters);

/// The mean of each cluster, row-major, `clusters` rows of `samples.columns`; zeros for an empty cluster.
[[nodiscard]] std::vector<double> clusterMeans(const Samples& samples, Labels labels, std::int32_t clusters);

/// @param labels one for each row of samples.
[[nodiscard]] SumsOfSquares sumsOfSquares(const Samples& samples, Labels labels, std::int32_t clusters);

}  // namespace mervane::analysis
