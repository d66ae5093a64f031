#pragma once

#include <memory>
#include <string>

#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/charts/model.h"

namespace mervane::workbook::charts {

/// A chart that came with the file, as far as it is seen from outside: its title, type, legend and the names and
/// references of its series. A title that is taken from a cell is read from the part's cache, or from the cell.
/// @returns empty for what is no chart part.
[[nodiscard]] std::shared_ptr<Chart> readChart(ChartHost& host, const std::string& part);

}  // namespace mervane::workbook::charts
