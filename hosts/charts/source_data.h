#pragma once

#include "hosts/charts/chart_store.h"
#include "hosts/charts/model.h"

namespace mervane::charts {

/// Makes the cells of a range the series of a chart. Series that the chart has keep their look, by position; those
/// left over go. A first row or column of texts gives categories and names instead of values, as the application
/// reads a range. Raises for more series than a chart takes.
void takeSource(ChartCells& host, Chart& chart, const SheetArea& source, bool rowsAreSeries);

}  // namespace mervane::charts
