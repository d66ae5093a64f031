#include "analysis/sums_of_squares.h"

namespace mervane::analysis {
namespace {

std::size_t position(std::int32_t label) {
  return static_cast<std::size_t>(label - 1);
}

void addTo(std::span<double> sum, std::span<const double> row) {
  for (std::size_t i = 0; i < row.size(); ++i) sum[i] += row[i];
}

void divide(std::span<double> sum, std::int64_t count) {
  if (count == 0) return;
  for (double& value : sum) value /= static_cast<double>(count);
}

std::vector<double> overallMean(const Samples& samples, Labels labels, std::int32_t clusters) {
  std::vector<double> mean(samples.columns, 0.0);
  std::int64_t count = 0;
  for (std::size_t row = 0; row < labels.size(); ++row) {
    if (!isCluster(labels[row], clusters)) continue;
    addTo(mean, samples.row(row));
    ++count;
  }
  divide(mean, count);
  return mean;
}

}  // namespace

std::vector<std::int64_t> clusterSizes(Labels labels, std::int32_t clusters) {
  std::vector<std::int64_t> sizes(static_cast<std::size_t>(clusters), 0);
  for (const std::int32_t label : labels) {
    if (isCluster(label, clusters)) ++sizes[position(label)];
  }
  return sizes;
}

std::vector<double> clusterMeans(const Samples& samples, Labels labels, std::int32_t clusters) {
  const std::size_t columns = samples.columns;
  std::vector<double> means(static_cast<std::size_t>(clusters) * columns, 0.0);
  for (std::size_t row = 0; row < labels.size(); ++row) {
    if (!isCluster(labels[row], clusters)) continue;
    addTo(std::span(means).subspan(position(labels[row]) * columns, columns), samples.row(row));
  }
  const std::vector<std::int64_t> sizes = clusterSizes(labels, clusters);
  for (std::size_t c = 0; c < sizes.size(); ++c) divide(std::span(means).subspan(c * columns, columns), sizes[c]);
  return means;
}

SumsOfSquares sumsOfSquares(const Samples& samples, Labels labels, std::int32_t clusters) {
  const std::vector<double> means = clusterMeans(samples, labels, clusters);
  const std::vector<double> mean = overallMean(samples, labels, clusters);
  const Samples centres{means, samples.columns};

  SumsOfSquares sums;
  sums.withinOfCluster.assign(static_cast<std::size_t>(clusters), 0.0);
  for (std::size_t row = 0; row < labels.size(); ++row) {
    if (!isCluster(labels[row], clusters)) continue;
    const std::size_t cluster = position(labels[row]);
    sums.withinOfCluster[cluster] += squaredDistance(samples.row(row), centres.row(cluster));
    sums.between += squaredDistance(centres.row(cluster), mean);
    sums.total += squaredDistance(samples.row(row), mean);
  }
  for (const double value : sums.withinOfCluster) sums.within += value;
  return sums;
}

}  // namespace mervane::analysis
