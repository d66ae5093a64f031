#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

/// How good clusters are: the shipped data sets, k-means as the measure, and the component's answer.
namespace mervane::quality {

enum class Use {
  tuning,    ///< Looked at while the rule was made.
  heldBack,  ///< Not looked at until the rule stood.
  apart,     ///< With isolated outliers: there a map and k-means want different things.
};

struct ShippedSet {
  const char* file;  ///< Under `examples/`.
  Use use;
};

/// All sets that quality is measured on.
[[nodiscard]] std::span<const ShippedSet> shippedSets();

/// Rows of numbers.
struct Table {
  std::size_t rows = 0;
  std::size_t columns = 0;
  std::vector<double> values;  ///< Row-major.
};

/// The columns of a comma-separated file with a header that hold numbers only. Throws std::runtime_error with the file
/// name.
[[nodiscard]] Table readNumbers(const std::filesystem::path& file);
/// One column of a file as texts, by its header.
[[nodiscard]] std::vector<std::string> readTexts(const std::filesystem::path& file, const std::string& header);
/// Each column brought to 0.001 to 0.999, as the component does it.
[[nodiscard]] Table scaled(const Table& table);

struct Clustering {
  std::vector<std::int32_t> clusters;  ///< From 1.
  double within = 0.0;     ///< Sum of squared distances of the scaled rows from the means of their clusters.
  std::int32_t empty = 0;  ///< Clusters without a row.
};

/// Clusters by `Classifier3` with its default parameters and the built-in engine.
[[nodiscard]] Clustering byComponent(const Table& raw, std::int32_t clusters, bool convex = true);
/// The best of several k-means runs from k-means++ starts on scaled rows, each until nothing changes.
[[nodiscard]] Clustering byKMeans(const Table& rows, std::int32_t clusters, int restarts);

/// component.within / kMeans.within, 1 where both are nothing but rounding.
[[nodiscard]] double ratio(const Clustering& component, const Clustering& kMeans);
/// The adjusted Rand index of two partitions (L. Hubert and P. Arabie, 1985).
[[nodiscard]] double adjustedRand(std::span<const std::int32_t> clusters, std::span<const std::string> classes);

/// Median, 9th decile and worst of some ratios.
struct Summary {
  double median = 0.0;
  double ninthDecile = 0.0;
  double worst = 0.0;
};
[[nodiscard]] Summary summary(std::vector<double> ratios);

}  // namespace mervane::quality
