#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "hosts/charts/chart_store.h"
#include "hosts/charts/model.h"

/// The texts of a chart's series: names and formulas.
namespace mervane::charts {

/// What a legend shows where no cell needs to be read: the series' own text, or "Series1", "Series2", ...
/// @param index from 0
[[nodiscard]] std::string shownName(const Chart& chart, std::size_t index);

/// The name with a cell that holds it read.
[[nodiscard]] std::string nameOf(ChartCells& host, const Chart& chart, std::size_t index);

/// A cell as text, without a number format; an error gives its sign such as "#N/A".
[[nodiscard]] std::string cellText(ChartCells& host, std::int32_t sheet, CellAddress cell);

/// "Sheet1!$A$1:$B$2", or the formula as the file has it; empty where there is neither.
[[nodiscard]] std::string referenceText(ChartCells& host, const DataSource& source);

/// "=SERIES(name,categories,values,order)"; empty for a series without values.
/// @param order from 1
[[nodiscard]] std::string seriesFormula(ChartCells& host, const Series& series, std::size_t order);

/// What a formula such as "Sheet1!$A$1:$A$5" refers to: cells where it is plain, else the formula itself.
[[nodiscard]] DataSource sourceOf(const ChartCells& host, const std::string& formula);

}  // namespace mervane::charts
