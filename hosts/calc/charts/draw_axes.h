#pragma once

#include <com/sun/star/chart2/XCoordinateSystem.hpp>
#include <com/sun/star/chart2/data/XDataProvider.hpp>

#include "hosts/calc/session.h"
#include "hosts/charts/model.h"

namespace mervane::calc {

/// Gives the coordinate system the category axis and the value axis, with the categories of the first series.
void drawAxes(const Session& session, const uno::Reference<css::chart2::data::XDataProvider>& provider,
              const uno::Reference<css::chart2::XCoordinateSystem>& system, const mervane::charts::Chart& chart);

}  // namespace mervane::calc
