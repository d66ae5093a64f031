#pragma once

#include "tests/hosts_workbook/charts/test_book.h"

namespace mervane::tests {

/// The two charts of a run over the book "plain.xlsx", made and styled by the calls that a run makes, and placed
/// right of column G at row 2.
void makeRunCharts(TestBook& book);
sheet::Chart addProfilesChart(TestBook& book, const sheet::Range& source, const sheet::Range& header);
sheet::Chart addWeightsChart(TestBook& book, const sheet::Range& source, const sheet::Range& labels);

inline constexpr std::int32_t mediumLine = -4138;
inline constexpr std::int32_t thinLine = 2;

}  // namespace mervane::tests
