// Prints docs/quality.md: how good the clusters of the component are on the shipped data sets.
//
//   mervane_quality EXAMPLES_FOLDER > docs/quality.md

#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <vector>

#include "bench/clustering_quality.h"

namespace {

using namespace mervane::quality;

constexpr int restarts = 50;
constexpr std::int32_t fewestClusters = 2;
constexpr std::int32_t mostClusters = 10;

/// What is measured on one set with one setting of the convex combination.
struct Result {
  const ShippedSet* set;
  Table table;
  std::vector<double> ratios;
  int emptied = 0;  ///< Cases with more empty clusters than k-means has.
};

std::vector<Clustering> references(const Table& table) {
  std::vector<Clustering> result;
  for (std::int32_t clusters = fewestClusters; clusters <= mostClusters; ++clusters)
    result.push_back(byKMeans(scaled(table), clusters, restarts));
  return result;
}

Result measure(const ShippedSet& set, const Table& table, const std::vector<Clustering>& best, bool convex) {
  Result result{&set, table, {}, 0};
  for (std::int32_t clusters = fewestClusters; clusters <= mostClusters; ++clusters) {
    const Clustering& reference = best[static_cast<std::size_t>(clusters - fewestClusters)];
    const Clustering own = byComponent(table, clusters, convex);
    result.ratios.push_back(ratio(own, reference));
    if (own.empty > reference.empty) ++result.emptied;
  }
  return result;
}

void printSummary(const char* title, const std::vector<Result>& results, std::initializer_list<Use> uses) {
  std::vector<double> ratios;
  int emptied = 0;
  for (const Result& result : results) {
    for (const Use use : uses) {
      if (result.set->use != use) continue;
      ratios.insert(ratios.end(), result.ratios.begin(), result.ratios.end());
      emptied += result.emptied;
    }
  }
  const Summary all = summary(ratios);
  std::printf("| %s | %zu | %.4f | %.3f | %.3f | %d |\n", title, ratios.size(), all.median, all.ninthDecile, all.worst,
              emptied);
}

void printSummaries(const std::vector<Result>& convex, const std::vector<Result>& plain) {
  std::printf("| sets | cases | median | 9 of 10 within | worst | with a needless empty cluster |\n");
  std::printf("|---|---|---|---|---|---|\n");
  std::printf("| *goal* | | *1.01* | *1.05* | *1.20* | *0* |\n");
  printSummary("all but those with outliers", convex, {Use::tuning, Use::heldBack});
  printSummary("tuning", convex, {Use::tuning});
  printSummary("held back", convex, {Use::heldBack});
  printSummary("with isolated outliers", convex, {Use::apart});
  printSummary("all but outliers, convex combination off", plain, {Use::tuning, Use::heldBack});
  printSummary("held back, convex combination off", plain, {Use::heldBack});
}

void printTable(const std::vector<Result>& results) {
  std::printf("| set | use | rows x columns |");
  for (std::int32_t clusters = fewestClusters; clusters <= mostClusters; ++clusters) std::printf(" %d |", clusters);
  std::printf("\n|---|---|---|");
  for (std::int32_t clusters = fewestClusters; clusters <= mostClusters; ++clusters) std::printf("---|");
  std::printf("\n");
  for (const Result& result : results) {
    const char* use = result.set->use == Use::tuning     ? "tuning"
                      : result.set->use == Use::heldBack ? "held back"
                                                         : "apart";
    std::printf("| %s | %s | %zu x %zu |", std::filesystem::path(result.set->file).stem().string().c_str(), use,
                result.table.rows, result.table.columns);
    for (const double one : result.ratios) std::printf(" %.3f |", one);
    std::printf("\n");
  }
}

void printAll(const std::filesystem::path& examples) {
  std::vector<Result> convex;
  std::vector<Result> plain;
  for (const ShippedSet& set : shippedSets()) {
    const Table table = readNumbers(examples / set.file);
    const std::vector<Clustering> best = references(table);
    convex.push_back(measure(set, table, best, true));
    plain.push_back(measure(set, table, best, false));
  }
  const std::filesystem::path iris = examples / "iris.csv";
  const std::vector<std::int32_t> clusters = byComponent(readNumbers(iris), 3).clusters;

  std::printf("# How good the clusters are\n\n");
  std::printf(
      "Written by `mervane_quality`; make it anew with\n\n"
      "```\ncmake --preset bench && cmake --build --preset bench --target mervane_quality\n"
      "build/bench/bench/mervane_quality examples > docs/quality.md\n```\n\n"
      "Each number is the sum of squared distances of the scaled rows (0.001 to 0.999 in each column) from the means "
      "of\n"
      "their clusters, over that of the best of %d k-means runs from k-means++ starts. The clusters are those of\n"
      "`Classifier3` with its default parameters. Below 1 the component found what none of those runs did. Sets "
      "marked\n"
      "`tuning` were looked at while the learning rule was made, those marked `held back` only when it stood.\n\n",
      restarts);
  printSummaries(convex, plain);
  std::printf("\nIris with 3 clusters against its species: adjusted Rand index %.3f (goal 0.70).\n",
              adjustedRand(clusters, readTexts(iris, "species")));
  std::printf("\n## By number of clusters\n\n");
  printTable(convex);
  std::printf("\n## The same with the convex combination off\n\n");
  printTable(plain);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: mervane_quality EXAMPLES_FOLDER\n";
    return 2;
  }
  try {
    printAll(argv[1]);
  } catch (const std::exception& failure) {
    std::cerr << "mervane_quality: " << failure.what() << '\n';
    return 3;
  }
}
