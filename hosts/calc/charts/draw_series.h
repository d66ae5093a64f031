#pragma once

#include <com/sun/star/chart2/XChartType.hpp>
#include <com/sun/star/chart2/data/XDataProvider.hpp>

#include "hosts/calc/session.h"
#include "hosts/charts/model.h"

namespace mervane::calc {

/// A chart type that holds all series of the chart.
[[nodiscard]] uno::Reference<css::chart2::XChartType> drawnSeries(
    const Session& session, const uno::Reference<css::chart2::data::XDataProvider>& provider,
    const mervane::charts::Chart& chart);

}  // namespace mervane::calc
