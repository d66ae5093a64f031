#pragma once

#include <cstdint>
#include <string>

namespace mervane::guard {

/// What is wrong with the number of clusters that a run is asked for, as a sentence without a full stop that says what
/// to give instead; empty for nothing. The component makes any number of them; a cluster without a row is of no use to
/// anybody, and a chart has no room for more series than the spreadsheets know.
/// @param rows of the inputs
[[nodiscard]] std::string clusterCountTrouble(std::int32_t clusters, std::int32_t rows, bool drawsCharts);

}  // namespace mervane::guard
