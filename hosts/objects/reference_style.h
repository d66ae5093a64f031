#pragma once

#include <cstdint>
#include <functional>

#include "hosts/objects/arguments.h"
#include "mervane/variant.h"
#include "spreadsheet/application.h"
#include "spreadsheet/cell_address.h"

/// The two styles in which formulas name cells.
namespace mervane::hosts {

inline constexpr std::int32_t styleA1 = sheet::referenceStyleA1;
inline constexpr std::int32_t styleR1C1 = sheet::referenceStyleR1C1;

/// An assigned ReferenceStyle; raises applicationDefined for a number that is none.
[[nodiscard]] std::int32_t referenceStyle(Arguments arguments);

/// ConvertFormula: the formula in the other style, #VALUE! where a reference would lie off the sheet. Relative
/// references are seen from the cells that the last argument stands for, else from the active cell, which is asked for
/// only then.
[[nodiscard]] Variant convertFormula(Arguments arguments, const std::function<sheet::CellAddress()>& activeCell,
                                     const AreaOf& areaOf);

}  // namespace mervane::hosts
