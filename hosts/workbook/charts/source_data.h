#pragma once

#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/charts/model.h"

namespace mervane::workbook::charts {

/// Makes the cells of a range the series of a chart. Series that the chart has keep their look, by position; those
/// left over go. A first row or column of texts gives categories and names instead of values, as the application
/// reads a range. Raises for more series than a chart takes.
void takeSource(ChartHost& host, Chart& chart, const SheetArea& source, bool rowsAreSeries);

}  // namespace mervane::workbook::charts
