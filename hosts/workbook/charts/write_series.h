#pragma once

#include <cstdint>
#include <pugixml.hpp>

#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/charts/model.h"

namespace mervane::workbook::charts {

/// `c:ser` of a line chart or a bar chart.
/// @param index from 0
void ser(pugi::xml_node parent, ChartHost& host, const Chart& chart, std::int32_t index);

}  // namespace mervane::workbook::charts
