#include "cli/report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "analysis/map_errors.h"
#include "analysis/sums_of_squares.h"
#include "cli/cluster_run.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

/// Six significant digits; the program never leaves the C locale.
std::string figure(double value) {
  std::array<char, 32> text{};
  const int length = std::snprintf(text.data(), text.size(), "%.6g", value);
  return {text.data(), static_cast<std::size_t>(std::max(length, 0))};
}

std::string percent(double share) {
  std::array<char, 32> text{};
  const int length = std::snprintf(text.data(), text.size(), "%.1f %%", share * 100.0);
  return {text.data(), static_cast<std::size_t>(std::max(length, 0))};
}

std::string line(std::string_view label, const std::string& value) {
  constexpr std::size_t labelWidth = 28;
  std::string text(label);
  text.append(labelWidth - std::min(labelWidth, text.size()), ' ');
  return text + value + "\n";
}

std::string rightAligned(const std::string& text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string columnList(const std::vector<std::string>& columns) {
  constexpr std::size_t shown = 8;
  std::string list;
  for (std::size_t i = 0; i < std::min(shown, columns.size()); ++i) list += (i == 0 ? "" : ", ") + columns[i];
  return columns.size() > shown ? list + ", ..." : list;
}

std::string silhouetteText(const analysis::Silhouette& silhouette) {
  if (!silhouette.mean) return "not defined with fewer than two clusters in use";
  std::string text = figure(*silhouette.mean);
  if (silhouette.sampled) {
    text += " (from a fixed sample of " + grouped(static_cast<long long>(silhouette.samplesUsed)) + " rows)";
  }
  return text;
}

}  // namespace

Report countsOf(const ClusterRun& run, std::vector<std::string> columns, bool scaled) {
  Report report;
  report.rows = static_cast<std::int64_t>(run.labels.size());
  report.columns = std::move(columns);
  report.sizes = analysis::clusterSizes(run.labels, run.clusters);
  for (std::size_t i = 0; i < report.sizes.size(); ++i) {
    report.rowsWithoutCluster -= report.sizes[i];
    if (report.sizes[i] == 0) report.emptyClusters.push_back(static_cast<std::int32_t>(i) + 1);
  }
  report.rowsWithoutCluster += report.rows;
  report.epochs = run.epochs;
  report.epochsDone = run.epochsDone;
  report.scaled = scaled;
  return report;
}

void measure(Report& report, const ClusterRun& run) {
  const analysis::Samples samples{run.samples, run.columns};
  if (!run.units.empty()) {
    const analysis::MapErrors errors = analysis::mapErrors(samples, {run.units, run.columns});
    report.quantisationError = errors.quantisation;
    report.topographicError = errors.topographic;
  }
  const analysis::SumsOfSquares sums = analysis::sumsOfSquares(samples, run.labels, run.clusters);
  report.within = sums.within;
  report.between = sums.between;
  report.total = sums.total;
  report.silhouette = analysis::silhouette(samples, run.labels, run.clusters);
}

std::string reportText(const Report& report) {
  const auto columns = static_cast<long long>(report.columns.size());
  std::string text = line("Rows", grouped(report.rows));
  text += line("Columns", grouped(columns) + " (" + columnList(report.columns) + ")");
  text +=
      line("Epochs", report.epochsDone == report.epochs ? grouped(report.epochs)
                                                        : grouped(report.epochsDone) + " of " + grouped(report.epochs));
  const std::size_t width = grouped(report.rows).size();
  for (std::size_t i = 0; i < report.sizes.size(); ++i) {
    const double share = static_cast<double>(report.sizes[i]) / static_cast<double>(report.rows);
    text += line("Cluster " + decimal(static_cast<long long>(i) + 1),
                 rightAligned(grouped(report.sizes[i]), width) + (report.sizes[i] == 1 ? " row   " : " rows  ") +
                     rightAligned(percent(share), 7));
  }
  if (report.rowsWithoutCluster > 0) text += line("Rows without a cluster", grouped(report.rowsWithoutCluster));
  if (report.quantisationError) text += line("Quantisation error", figure(*report.quantisationError));
  if (report.topographicError) text += line("Topographic error", percent(*report.topographicError));
  text += line("Within sum of squares", figure(report.within));
  const double explained = report.total > 0.0 ? report.between / report.total : 0.0;
  text += line("Between sum of squares", figure(report.between) + " (" + percent(explained) + " of all)");
  text += line("Silhouette", silhouetteText(report.silhouette));
  text += report.scaled ? "Measured on the scaled values.\n" : "Measured on the values as they are.\n";
  return text;
}

std::string emptyClustersText(const std::vector<std::int32_t>& clusters) {
  if (clusters.empty()) return {};
  constexpr std::size_t shown = 10;
  if (clusters.size() > shown) return grouped(static_cast<long long>(clusters.size())) + " clusters are empty";
  std::string list;
  for (std::size_t i = 0; i < clusters.size(); ++i) {
    if (i > 0) list += i + 1 == clusters.size() ? " and " : ", ";
    list += decimal(clusters[i]);
  }
  return clusters.size() == 1 ? "cluster " + list + " is empty" : "clusters " + list + " are empty";
}

}  // namespace mervane::cli
