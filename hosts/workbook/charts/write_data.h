#pragma once

#include <pugixml.hpp>
#include <string>

#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/charts/model.h"

/// The data of a series: references with the values that their cells have now.
namespace mervane::workbook::charts {

/// `c:tx`: the name; nothing for a series without one.
void tx(pugi::xml_node parent, ChartHost& host, const Series& series);
/// `c:cat`: the categories; nothing where the series has none. Cells of numbers alone become numbers, others texts.
void cat(pugi::xml_node parent, ChartHost& host, const Series& series);
/// `c:val`: the values. An empty cell and an error are points that are missing.
void val(pugi::xml_node parent, ChartHost& host, const Series& series);

/// The number format of the first value, which a value axis takes over; "General" where there is none.
[[nodiscard]] std::string valueFormat(ChartHost& host, const Chart& chart);
/// Whether one of the values is an error such as #N/A.
[[nodiscard]] bool holdsErrors(ChartHost& host, const Chart& chart);

}  // namespace mervane::workbook::charts
