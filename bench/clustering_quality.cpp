#include "bench/clustering_quality.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <stdexcept>
#include <utility>

#include "component/scale_value.h"
#include "engine/create_network_engine.h"
#include "mervane/classifier3.h"

namespace mervane::quality {

namespace {

constexpr std::array sets{
    ShippedSet{"iris.csv", Use::tuning},
    ShippedSet{"data/faithful.csv", Use::tuning},
    ShippedSet{"data/us_arrests.csv", Use::tuning},
    ShippedSet{"data/quakes.csv", Use::tuning},
    ShippedSet{"data/blobs.csv", Use::tuning},
    ShippedSet{"data/rings.csv", Use::tuning},
    ShippedSet{"data/ill_scaled.csv", Use::tuning},
    ShippedSet{"data/duplicates.csv", Use::tuning},
    ShippedSet{"data/one_column.csv", Use::tuning},
    ShippedSet{"data/sorted_classes.csv", Use::tuning},
    ShippedSet{"data/unbalanced.csv", Use::tuning},
    ShippedSet{"data/swiss.csv", Use::heldBack},
    ShippedSet{"data/rock.csv", Use::heldBack},
    ShippedSet{"data/stock_indices.csv", Use::heldBack},
    ShippedSet{"data/judge_ratings.csv", Use::heldBack},
    ShippedSet{"data/air_quality.csv", Use::heldBack},
    ShippedSet{"data/motor_cars.csv", Use::heldBack},
    ShippedSet{"data/trees.csv", Use::heldBack},
    ShippedSet{"data/states.csv", Use::heldBack},
    ShippedSet{"data/moons.csv", Use::heldBack},
    ShippedSet{"data/elongated.csv", Use::heldBack},
    ShippedSet{"data/wide.csv", Use::heldBack},
    ShippedSet{"data/uniform_square.csv", Use::heldBack},
    ShippedSet{"data/few_rows.csv", Use::heldBack},
    ShippedSet{"data/unlike_spreads.csv", Use::heldBack},
    ShippedSet{"data/outliers.csv", Use::apart},
};

/// A sum of squares below this is rounding: rows lie between 0.001 and 0.999.
constexpr double rounding = 1e-12;

std::vector<std::vector<std::string>> readCells(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::vector<std::vector<std::string>> rows;
  for (std::string line; std::getline(in, line);) {
    std::vector<std::string>& cells = rows.emplace_back();
    for (std::size_t start = 0; start <= line.size();) {
      const std::size_t end = std::min(line.find(',', start), line.size());
      cells.push_back(line.substr(start, end - start));
      start = end + 1;
    }
    if (cells.size() != rows.front().size())
      throw std::runtime_error(file.string() + ": line " + std::to_string(rows.size()) + " has another length");
  }
  if (rows.size() < 2) throw std::runtime_error(file.string() + ": no rows to read");
  return rows;
}

bool readNumber(const std::string& text, double& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size();
}

double squaredDistance(const double* a, const double* b, std::size_t columns) {
  double sum = 0.0;
  for (std::size_t j = 0; j < columns; ++j) sum += (a[j] - b[j]) * (a[j] - b[j]);
  return sum;
}

/// Fills `within` and `empty` from `clusters`, and `means` where it is wanted.
void measure(const Table& rows, std::int32_t clusters, Clustering& result, std::vector<double>& means) {
  const auto count = static_cast<std::size_t>(clusters);
  means.assign(count * rows.columns, 0.0);
  std::vector<double> sizes(count);
  for (std::size_t i = 0; i < rows.rows; ++i) {
    const auto cluster = static_cast<std::size_t>(result.clusters[i] - 1);
    sizes[cluster] += 1.0;
    for (std::size_t j = 0; j < rows.columns; ++j)
      means[cluster * rows.columns + j] += rows.values[i * rows.columns + j];
  }
  result.empty = 0;
  for (std::size_t cluster = 0; cluster < count; ++cluster) {
    if (sizes[cluster] == 0.0) ++result.empty;
    for (std::size_t j = 0; j < rows.columns; ++j) means[cluster * rows.columns + j] /= std::max(sizes[cluster], 1.0);
  }
  result.within = 0.0;
  for (std::size_t i = 0; i < rows.rows; ++i) {
    const auto cluster = static_cast<std::size_t>(result.clusters[i] - 1);
    result.within += squaredDistance(&rows.values[i * rows.columns], &means[cluster * rows.columns], rows.columns);
  }
}

/// The generator SplitMix64 of G. Steele, D. Lea and C. Flood (2014).
class Chance {
 public:
  double uniform() {
    state_ += 0x9e3779b97f4a7c15ULL;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
    return static_cast<double>((mixed ^ (mixed >> 31)) >> 11) / 9007199254740992.0;
  }
  std::size_t below(std::size_t count) { return static_cast<std::size_t>(uniform() * static_cast<double>(count)); }

 private:
  std::uint64_t state_ = 1;
};

/// Start means, each new one drawn by its squared distance from the nearest so far.
std::vector<double> startMeans(const Table& rows, std::int32_t clusters, Chance& chance) {
  std::vector<double> means;
  std::vector<double> gaps(rows.rows, std::numeric_limits<double>::infinity());
  std::size_t chosen = chance.below(rows.rows);
  for (std::int32_t cluster = 0; cluster < clusters; ++cluster) {
    const double* mean = &rows.values[chosen * rows.columns];
    means.insert(means.end(), mean, mean + rows.columns);
    double sum = 0.0;
    for (std::size_t i = 0; i < rows.rows; ++i) {
      gaps[i] = std::min(gaps[i], squaredDistance(&rows.values[i * rows.columns], mean, rows.columns));
      sum += gaps[i];
    }
    double left = sum * chance.uniform();
    for (chosen = 0; chosen + 1 < rows.rows && left >= gaps[chosen]; ++chosen) left -= gaps[chosen];
  }
  return means;
}

Clustering oneKMeans(const Table& rows, std::int32_t clusters, Chance& chance) {
  std::vector<double> means = startMeans(rows, clusters, chance);
  Clustering result;
  result.clusters.assign(rows.rows, 0);
  for (bool changed = true; changed;) {
    changed = false;
    for (std::size_t i = 0; i < rows.rows; ++i) {
      std::int32_t nearest = 1;
      double least = std::numeric_limits<double>::infinity();
      for (std::int32_t cluster = 1; cluster <= clusters; ++cluster) {
        const double* mean = &means[static_cast<std::size_t>(cluster - 1) * rows.columns];
        const double distance = squaredDistance(&rows.values[i * rows.columns], mean, rows.columns);
        if (distance >= least) continue;
        least = distance;
        nearest = cluster;
      }
      changed = changed || result.clusters[i] != nearest;
      result.clusters[i] = nearest;
    }
    const std::vector<double> before = means;
    measure(rows, clusters, result, means);
    // A mean without rows stays where it is.
    std::vector<char> used(static_cast<std::size_t>(clusters));
    for (const std::int32_t cluster : result.clusters) used[static_cast<std::size_t>(cluster - 1)] = 1;
    for (std::size_t k = 0; k < means.size(); ++k)
      if (used[k / rows.columns] == 0) means[k] = before[k];
  }
  return result;
}

}  // namespace

std::span<const ShippedSet> shippedSets() {
  return sets;
}

Table readNumbers(const std::filesystem::path& file) {
  const auto cells = readCells(file);
  std::vector<std::vector<double>> columns;
  for (std::size_t j = 0; j < cells.front().size(); ++j) {
    std::vector<double> column(cells.size() - 1);
    bool numbers = true;
    for (std::size_t i = 0; i < column.size() && numbers; ++i) numbers = readNumber(cells[i + 1][j], column[i]);
    if (numbers) columns.push_back(std::move(column));
  }
  if (columns.empty()) throw std::runtime_error(file.string() + ": no column of numbers");
  Table table{cells.size() - 1, columns.size(), {}};
  for (std::size_t i = 0; i < table.rows; ++i)
    for (const std::vector<double>& column : columns) table.values.push_back(column[i]);
  return table;
}

std::vector<std::string> readTexts(const std::filesystem::path& file, const std::string& header) {
  const auto cells = readCells(file);
  const auto place = std::ranges::find(cells.front(), header);
  if (place == cells.front().end()) throw std::runtime_error(file.string() + ": no column " + header);
  std::vector<std::string> texts;
  for (std::size_t i = 1; i < cells.size(); ++i)
    texts.push_back(cells[i][static_cast<std::size_t>(place - cells.front().begin())]);
  return texts;
}

Table scaled(const Table& table) {
  Table result = table;
  for (std::size_t j = 0; j < table.columns; ++j) {
    double least = table.values[j];
    double most = table.values[j];
    for (std::size_t i = 1; i < table.rows; ++i) {
      least = std::min(least, table.values[i * table.columns + j]);
      most = std::max(most, table.values[i * table.columns + j]);
    }
    for (std::size_t i = 0; i < table.rows; ++i) {
      double& value = result.values[i * table.columns + j];
      value = scaleValue(value, least, most, scaledMinimum, scaledMaximum);
    }
  }
  return result;
}

Clustering byComponent(const Table& raw, std::int32_t clusters, bool convex) {
  const Bounds rows{1, static_cast<std::int32_t>(raw.rows)};
  const Bounds columns{1, static_cast<std::int32_t>(raw.columns)};
  const auto classifier = Classifier3::create({createNetworkEngine});
  classifier->Inputs(Variant(Array<double>({rows, columns}, raw.values)));
  classifier->Clusters(clusters);
  classifier->UseConvexCombination(convex);
  classifier->Run();
  Clustering result;
  result.clusters = classifier->Outputs().elements();
  classifier->UnloadfrmMain();
  if (std::ranges::any_of(result.clusters, [&](std::int32_t one) { return one < 1 || one > clusters; }))
    throw std::runtime_error("a row has no cluster");
  std::vector<double> means;
  measure(scaled(raw), clusters, result, means);
  return result;
}

Clustering byKMeans(const Table& rows, std::int32_t clusters, int restarts) {
  Chance chance;
  Clustering best;
  for (int restart = 0; restart < restarts; ++restart) {
    Clustering one = oneKMeans(rows, clusters, chance);
    if (restart == 0 || one.within < best.within) best = std::move(one);
  }
  return best;
}

double ratio(const Clustering& component, const Clustering& kMeans) {
  if (component.within < rounding && kMeans.within < rounding) return 1.0;
  return kMeans.within < rounding ? std::numeric_limits<double>::infinity() : component.within / kMeans.within;
}

double adjustedRand(std::span<const std::int32_t> clusters, std::span<const std::string> classes) {
  std::map<std::pair<std::int32_t, std::string>, double> cells;
  std::map<std::int32_t, double> rows;
  std::map<std::string, double> columns;
  for (std::size_t i = 0; i < clusters.size(); ++i) {
    cells[{clusters[i], classes[i]}] += 1.0;
    rows[clusters[i]] += 1.0;
    columns[classes[i]] += 1.0;
  }
  const auto pairs = [](double count) { return count * (count - 1.0) / 2.0; };
  const auto pairsOf = [&](const auto& counts) {
    double sum = 0.0;
    for (const auto& [key, count] : counts) sum += pairs(count);
    return sum;
  };
  const double both = pairsOf(cells);
  const double expected = pairsOf(rows) * pairsOf(columns) / pairs(static_cast<double>(clusters.size()));
  return (both - expected) / ((pairsOf(rows) + pairsOf(columns)) / 2.0 - expected);
}

Summary summary(std::vector<double> ratios) {
  std::ranges::sort(ratios);
  const auto at = [&](double part) {
    return ratios[static_cast<std::size_t>(std::ceil(part * static_cast<double>(ratios.size()))) - 1];
  };
  return {at(0.5), at(0.9), ratios.back()};
}

}  // namespace mervane::quality
