#pragma once

#include <string>
#include <string_view>

#include "guard/facts.h"

/// Pieces of sentences for people.
namespace mervane::guard {

/// "Data!B8:E22".
[[nodiscard]] std::string placeOf(std::string_view sheet, const CellArea& area);
[[nodiscard]] std::string placeOf(std::string_view sheet, CellAddress at);
/// "Data!A3 "=B2", Data!A4 "=B3", ...".
[[nodiscard]] std::string formulasText(const FormulaList& formulas);
/// "3 cells of Data!B8:E22: B8 "Total", C8 "7", ...".
[[nodiscard]] std::string cellsText(std::string_view sheet, const CellArea& area, const AreaFacts& facts);

}  // namespace mervane::guard
