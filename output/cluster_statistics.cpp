#include <algorithm>
#include <functional>

#include "mervane/convert.h"
#include "output/cluster_texts.h"
#include "output/output_formatting.h"
#include "output/procedure_keys.h"
#include "support/globals.h"
#include "support/procedures.h"

namespace mervane {

namespace key = output::key;

namespace {

/// Marks a cluster without members; a chart leaves its points out.
const char* const noMembers = "=NA()";
constexpr const char* percentFormat = "0.00%";
constexpr std::int32_t lightGrey = 0xEAEAEA;

// Start values of the extremes. NB: the exponent is 307; a cell at or beyond them counts as no value.
constexpr double minimumMark = 1.79769313486232E+307;
constexpr double maximumMark = -1.79769313486232E+307;

template <class T>
Array<T> perCluster(std::int32_t clusters) {
  return Array<T>({{1, clusters}});
}

template <class T>
void fill(Array<T>& values, const T& value) {
  std::fill(values.elements().begin(), values.elements().end(), value);
}

}  // namespace

void COutputFormatting::PrintAverages() {
  wrapping(key::className, key::PrintAverages, [&] {
    const Locale& locale = globals::platform().locale;
    const std::int32_t rows = inputRange_.Rows().Count();
    const std::int32_t columns = inputRange_.Columns().Count();
    // 1.
    Array<Variant> sums = perCluster<Variant>(clusters_);
    Array<double> counts = perCluster<double>(clusters_);
    // 2. Each column is written as soon as it is computed.
    for (std::int32_t j = 1; j <= columns; ++j) {
      fill(sums, Variant(std::int16_t{0}));
      fill(counts, 0.0);
      for (std::int32_t i = 1; i <= rows; ++i) {
        const std::int32_t c = result_.at(i);
        sums.at(c) = add(sums.at(c), inputRange_.Item(i, j).Value(), locale);
        counts.at(c) += 1.0;
      }
      for (std::int32_t k = 1; k <= clusters_; ++k) {
        const sheet::Range cell = printCursor_.Item(k, j);
        if (counts.at(k) <= 0.0) {
          cell.Value(Variant(noMembers));
        } else {
          cell.Value(divide(sums.at(k), Variant(counts.at(k)), locale));
        }
      }
    }
    // 3. to 6.
    printLabels(columns, " average");
    finishBlock(printCursor_.Resize(clusters_, columns + 1));
  });
}

void COutputFormatting::PrintWeightedAverage() {
  wrapping(key::className, key::PrintWeightedAverage, [&] {
    const Locale& locale = globals::platform().locale;
    const std::int32_t rows = inputRange_.Rows().Count();
    const std::int32_t columns = inputRange_.Columns().Count();
    Array<double> sums = perCluster<double>(clusters_);
    Array<double> counts = perCluster<double>(clusters_);
    const double rowCount = rows;
    for (std::int32_t j = 1; j <= columns; ++j) {
      fill(sums, 0.0);
      fill(counts, 0.0);
      double total = 0.0;
      for (std::int32_t i = 1; i <= rows; ++i) {
        const std::int32_t c = result_.at(i);
        const double value = toDouble(inputRange_.Item(i, j).Value(), locale);
        total += value;
        sums.at(c) += value;
        counts.at(c) += 1.0;
      }
      for (std::int32_t k = 1; k <= clusters_; ++k) {
        const double mean = total / rowCount;
        if (counts.at(k) > 0.0) {
          // NB: a column with a total of 0 hands a number that is not finite to the cell.
          printCursor_.Item(k, j).Value(Variant((sums.at(k) / counts.at(k) - mean) / mean));
        } else {
          printCursor_.Item(k, j).Value(Variant(noMembers));
        }
        printCursor_.Item(k, j).NumberFormat(percentFormat);
      }
    }
    printLabels(columns, " weighted average (%)");
    // The labels are left out of the chart.
    if (drawCharts_) AddPortraitChart(printCursor_.Resize(clusters_, columns));
    finishBlock(printCursor_.Resize(clusters_, columns + 1));
  });
}

void COutputFormatting::PrintMinimums() {
  wrapping(key::className, key::PrintMinimums, [&] { printExtremes(minimumMark, " minimum", std::less<double>()); });
}

void COutputFormatting::PrintMaximums() {
  wrapping(key::className, key::PrintMaximums, [&] { printExtremes(maximumMark, " maximum", std::greater<double>()); });
}

/// @param mark start value of each cluster; where it survives, the cluster received no value.
/// @param beats whether its first argument replaces its second.
template <class Beats>
void COutputFormatting::printExtremes(double mark, const char* labelSuffix, Beats beats) {
  const Locale& locale = globals::platform().locale;
  const std::int32_t rows = inputRange_.Rows().Count();
  const std::int32_t columns = inputRange_.Columns().Count();
  Array<double> best = perCluster<double>(clusters_);
  for (std::int32_t j = 1; j <= columns; ++j) {
    fill(best, mark);
    for (std::int32_t i = 1; i <= rows; ++i) {
      double& bestOfCluster = best.at(result_.at(i));
      const double value = toDouble(inputRange_.Item(i, j).Value(), locale);
      if (beats(value, bestOfCluster)) bestOfCluster = value;
    }
    for (std::int32_t k = 1; k <= clusters_; ++k) {
      const sheet::Range cell = printCursor_.Item(k, j);
      cell.Value(beats(best.at(k), mark) ? Variant(best.at(k)) : Variant(noMembers));
    }
  }
  printLabels(columns, labelSuffix);
  finishBlock(printCursor_.Resize(clusters_, columns + 1));
}

void COutputFormatting::PrintClusterWeight() {
  wrapping(key::className, key::PrintClusterWeight, [&] {
    const std::int32_t rows = inputRange_.Rows().Count();
    const double rowCount = rows;
    Array<double> counts = perCluster<double>(clusters_);
    for (std::int32_t i = 1; i <= rows; ++i) counts.at(result_.at(i)) += 1.0;
    const std::int32_t width = printCursor_.Columns().Count();
    // 1. NB: a cluster without members has the weight 0; this block alone marks none.
    for (std::int32_t k = 1; k <= clusters_; ++k) {
      printCursor_.Item(k, width - 1).Value(Variant(counts.at(k) / rowCount));
      printCursor_.Item(k, width - 1).NumberFormat(percentFormat);
      printCursor_.Item(k, width).Value(Variant(output::clusterName(k) + " weight (%)"));
      printCursor_.Item(k, width).Font().Bold(true);
      if (setColors_) FillRange(printCursor_.Item(k, width - 1).Resize(1, 2), ClusterColorIndex(k));
    }
    // 2.
    if (drawCharts_) AddWeightsChart(printCursor_.Offset(0, width - 2).Resize(clusters_, 1));
    // 3. and 4.
    finishBlock(printCursor_.Offset(0, width - 2).Resize(clusters_, 2));
  });
}

void COutputFormatting::printLabels(std::int32_t columns, const char* suffix) {
  for (std::int32_t k = 1; k <= clusters_; ++k) {
    printCursor_.Item(k, columns + 1).Value(Variant(output::clusterName(k) + suffix));
    printCursor_.Item(k, columns + 1).Font().Bold(true);
    if (setColors_) FillRange(printCursor_.Item(k, 1).Resize(1, columns + 1), ClusterColorIndex(k));
  }
}

/// The last steps of each block.
void COutputFormatting::finishBlock(const sheet::Range& block) {
  FormatStatisticsBlock(block);
  printCursor_.Columns().EntireColumn().AutoFit();
  printCursor_ = printCursor_.Offset(clusters_, 0);
}

void COutputFormatting::FormatStatisticsBlock(const sheet::Range& block) {
  // 1. The colours of the clusters stay; only without them there is the grey.
  if (!setColors_) {
    attempt([&] { block.Interior().Pattern(sheet::patternSolid); });
    attempt([&] { block.Interior().Color(lightGrey); });
  }
  // 2. A single row or a single column has no inner line.
  const auto frame = [&](std::int32_t edge, std::int32_t weight) {
    attempt([&] { block.Borders(edge).LineStyle(sheet::lineContinuous); });
    attempt([&] { block.Borders(edge).Weight(weight); });
    attempt([&] { block.Borders(edge).ColorIndex(sheet::automatic); });
  };
  frame(sheet::edgeLeft, sheet::weightThin);
  frame(sheet::edgeTop, sheet::weightThin);
  frame(sheet::edgeBottom, sheet::weightThin);
  frame(sheet::edgeRight, sheet::weightThin);
  frame(sheet::insideVertical, sheet::weightHairline);
  frame(sheet::insideHorizontal, sheet::weightHairline);
}

}  // namespace mervane
