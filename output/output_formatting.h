#pragma once

#include <cstdint>
#include <string>

#include "mervane/array.h"
#include "mervane/variant.h"
#include "spreadsheet/application.h"

namespace mervane {

/// Writes the result of one clustering run into the worksheet: the cluster listing, statistics blocks under the
/// input rows, two charts right of the listing, and changes to the input rows themselves.
///
/// One instance serves one run: set ExcelApplication first, then the other properties, then call PrintData once.
/// A second call would print below the first. Nothing is tested for free space, and nothing is undone.
class COutputFormatting {
 public:
  void DrawCharts(bool on) { drawCharts_ = on; }        ///< make the two charts; true at first
  void SortData(bool on) { sortData_ = on; }            ///< sort the input rows by cluster; false at first
  void SetAutofilter(bool on) { setAutofilter_ = on; }  ///< filter arrows over the listing; false at first
  void SetColors(bool on) { setColors_ = on; }          ///< colour cells by cluster, else grey blocks; true at first
  /// The numeric input rows without a header row. The reference is resolved at once and as it stands, without
  /// conversion to A1; raises what the application raises.
  void InputRange(const std::string& reference);
  void CalculateClusterWeight(const Variant& on);  ///< the weights block and its chart; true at first
  void CalculateWeightedAverages(bool on) { calculateWeightedAverages_ = on; }  ///< and its chart; false at first
  void CalculateMaximums(bool on) { calculateMaximums_ = on; }                  ///< true at first
  void CalculateMinimums(bool on) { calculateMinimums_ = on; }                  ///< true at first
  void CalculateAverages(bool on) { calculateAverages_ = on; }                  ///< true at first
  void Clusters(std::int32_t count) { clusters_ = count; }                      ///< 0 at first
  /// The cluster number of each input row, 1 to Clusters.
  /// @param numbers a one-dimensional array indexed from 1 to the row count; raises typeMismatch for anything else
  ///   than an array of numbers. The array is copied: a sort does not reach the caller's.
  void result(const Variant& numbers);
  void ExcelApplication(const sheet::Application& application) { application_ = application; }
  /// The first cell of the listing; resolved anew at each use.
  void OutputCells(const std::string& reference) { outputCells_ = reference; }
  void ToOneColumn(bool on) { toOneColumn_ = on; }  ///< else one column of 0 and 1 for each cluster; true at first
  /// The data block; the statistics begin on the row under it. A failure is shown and not raised.
  void TotalRange(const std::string& reference);

  /// Carries out the whole plan. A failure is shown where it happens; what was printed stays on the sheet.
  void PrintData();
  /// Gives a chart its look. Whatever fails is passed over.
  /// @param borderWeight weight of the series' lines; weightThin also colours each point of its own.
  void ModifyChartObject(const sheet::Chart& chart, std::int32_t borderWeight);

 private:
  // output_formatting.cpp: the plan.
  [[nodiscard]] static std::int32_t ClusterColorIndex(std::int32_t cluster);
  [[nodiscard]] sheet::Range outputRange() const;

  // cluster_listing.cpp
  void SortInputRange();
  void PrintClusters();
  void PrintClustersToOneColumn();
  void PrintClustersToMutipleColumns();
  void ApplyAutofilter(const sheet::Range& listing);
  void ColorInputRows();
  static void FillRange(const sheet::Range& target, std::int32_t colorIndex);

  // cluster_statistics.cpp
  void PrintAverages();
  void PrintWeightedAverage();
  void PrintMinimums();
  void PrintMaximums();
  void PrintClusterWeight();
  void FormatStatisticsBlock(const sheet::Range& block);
  template <class Beats>
  void printExtremes(double mark, const char* labelSuffix, Beats beats);
  void printLabels(std::int32_t columns, const char* suffix);
  void finishBlock(const sheet::Range& block);

  // charts.cpp
  void DeleteOldCharts();
  void AddPortraitChart(const sheet::Range& source);
  void AddWeightsChart(const sheet::Range& source);
  void ResetChartSeries();
  void AdjustChartsLocation();

  bool drawCharts_ = true;
  bool sortData_ = false;
  bool setAutofilter_ = false;
  bool setColors_ = true;
  bool calculateClusterWeight_ = true;
  bool calculateWeightedAverages_ = false;
  bool calculateMaximums_ = true;
  bool calculateMinimums_ = true;
  bool calculateAverages_ = true;
  bool toOneColumn_ = true;
  std::int32_t clusters_ = 0;
  std::string outputCells_;
  Array<std::int32_t> result_;
  sheet::Application application_;
  sheet::Range inputRange_;
  /// The first free row under the data and the blocks already printed; one row high and one column wider than the
  /// data. It moves only downwards.
  sheet::Range printCursor_;
};

}  // namespace mervane
