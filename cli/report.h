#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/silhouette.h"

namespace mervane::cli {

struct ClusterRun;

enum class ReportForm { none, text, json };

/// What `--report` tells of a run. Every measure is taken on the values as the network saw them.
struct Report {
  std::int64_t rows = 0;
  std::vector<std::string> columns;  ///< their names, or their numbers
  std::vector<std::int64_t> sizes;   ///< of each cluster; index 0 is cluster 1
  std::vector<std::int32_t> emptyClusters;
  std::int64_t rowsWithoutCluster = 0;  ///< more than 0 only where a failure was ignored
  std::int32_t epochs = 0;
  std::int32_t epochsDone = 0;
  bool scaled = true;
  std::optional<double> quantisationError;
  std::optional<double> topographicError;
  double within = 0.0;
  double between = 0.0;
  double total = 0.0;
  analysis::Silhouette silhouette;
};

/// The counts of a run, without any measure that takes work.
/// @param columns what a person calls them.
[[nodiscard]] Report countsOf(const ClusterRun& run, std::vector<std::string> columns, bool scaled);
/// Adds the measures.
void measure(Report& report, const ClusterRun& run);

/// Lines for people.
[[nodiscard]] std::string reportText(const Report& report);
/// One JSON object on one line.
[[nodiscard]] std::string reportJson(const Report& report);

/// "clusters 2 and 5 are empty", for a warning; empty where none is.
[[nodiscard]] std::string emptyClustersText(const std::vector<std::int32_t>& clusters);

}  // namespace mervane::cli
