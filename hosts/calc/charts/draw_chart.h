#pragma once

#include <com/sun/star/chart2/XChartDocument.hpp>

#include "hosts/calc/session.h"
#include "hosts/charts/layout.h"
#include "hosts/charts/model.h"

namespace mervane::calc {

/// Makes the office's chart look and hold what the model says. Raises for what the office's charts cannot do.
/// @param size of the chart in its sheet, in points
void drawChart(Session& session, const uno::Reference<css::chart2::XChartDocument>& document,
               const mervane::charts::Chart& chart, mervane::charts::Size size);

}  // namespace mervane::calc
