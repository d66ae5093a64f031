#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "spreadsheet/cell_address.h"

namespace mervane::sheet {

/// The formula with its references brought from R1C1 into A1 notation: R2C3 becomes $C$2, R[1]C becomes a relative
/// reference seen from the base cell. Names, texts and sheet names stay. Nothing where a reference would lie off the
/// sheet.
[[nodiscard]] std::optional<std::string> toA1(std::string_view formula, CellAddress base);
/// The other way round.
[[nodiscard]] std::optional<std::string> toR1C1(std::string_view formula, CellAddress base);

}  // namespace mervane::sheet
