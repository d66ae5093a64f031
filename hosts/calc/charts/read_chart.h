#pragma once

#include <com/sun/star/chart2/XChartDocument.hpp>
#include <memory>

#include "hosts/calc/session.h"
#include "hosts/charts/model.h"

namespace mervane::calc {

/// What a chart of the document says: its type, its title, whether it has a legend, and where its series take their
/// data from.
[[nodiscard]] std::shared_ptr<mervane::charts::Chart> readChart(
    const Session& session, const uno::Reference<css::chart2::XChartDocument>& document);

}  // namespace mervane::calc
