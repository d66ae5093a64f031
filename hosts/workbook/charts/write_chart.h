#pragma once

#include <string>

#include "hosts/charts/layout.h"
#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/charts/model.h"

namespace mervane::workbook::charts {

/// A chart part, elements in the order that the format demands, with the cells' values as they are now.
/// @param size of the chart in its sheet, which the layout is worked out for
/// @param strict whether the part belongs to a workbook of the strict form
[[nodiscard]] std::string chartPart(ChartHost& host, const Chart& chart, Size size, bool strict);

}  // namespace mervane::workbook::charts
