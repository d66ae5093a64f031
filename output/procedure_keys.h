#pragma once

/// The names under which the procedures of COutputFormatting stand on the call stack and in their failures.
namespace mervane::output::key {

inline constexpr const char* className = "COutputFormatting";
inline constexpr const char* TotalRange = "MervaneClass3.COutputFormatting.TotalRange";
inline constexpr const char* PrintData = "MervaneClass3.COutputFormatting.PrintData";
inline constexpr const char* SortInputRange = "MervaneClass3.COutputFormatting.SortInputRange";
inline constexpr const char* PrintClustersToOneColumn = "MervaneClass3.COutputFormatting.PrintClustersToOneColumn";
inline constexpr const char* PrintClustersToMutipleColumns =
    "MervaneClass3.COutputFormatting.PrintClustersToMutipleColumns";
inline constexpr const char* PrintAverages = "MervaneClass3.COutputFormatting.PrintAverages";
inline constexpr const char* PrintMinimums = "MervaneClass3.COutputFormatting.PrintMinimums";
inline constexpr const char* PrintMaximums = "MervaneClass3.COutputFormatting.PrintMaximums";
inline constexpr const char* PrintWeightedAverage = "MervaneClass3.COutputFormatting.PrintWeightedAverage";
inline constexpr const char* PrintClusterWeight = "MervaneClass3.COutputFormatting.PrintClusterWeight";
inline constexpr const char* AdjustChartsLocation = "MervaneClass3.COutputFormatting.AdjustChartsLocation";
inline constexpr const char* AddPortraitChart = "MervaneClass3.COutputFormatting.AddPortraitChart";
inline constexpr const char* AddWeightsChart = "MervaneClass3.COutputFormatting.AddWeightsChart";
inline constexpr const char* ModifyChartObject = "MervaneClass3.COutputFormatting.ModifyChartObject";

}  // namespace mervane::output::key
