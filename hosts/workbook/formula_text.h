#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "mervane/variant.h"

namespace mervane::workbook {

/// The formula of a later member of a shared group: the group's formula with its relative references moved by the
/// distance of the two cells. A reference that would leave the sheet becomes #REF!.
[[nodiscard]] std::string movedFormula(std::string_view formula, std::int32_t rows, std::int32_t columns);

/// The formula of a cell that a sort moves from one row into another. References to the row itself go with it, be they
/// one cell or a stretch of one row; all others, those with a dollar sign before the row, and those of other sheets
/// keep what they name.
[[nodiscard]] std::string rowMovedFormula(std::string_view formula, std::int32_t fromRow, std::int32_t toRow);

/// The value of a formula that is a constant: a number, a text, TRUE, FALSE, an error, NA(), TRUE() or FALSE().
/// @param formula without its equals sign.
[[nodiscard]] std::optional<Variant> constantFormula(std::string_view formula);

}  // namespace mervane::workbook
