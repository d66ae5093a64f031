#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "mervane/variant.h"

namespace mervane::workbook {

/// A formula copied to another cell: its relative references move by the distance of the two cells, those of whole
/// columns and rows too. A reference that would leave the sheet becomes #REF!. Later members of a shared formula are
/// such copies of the first one.
[[nodiscard]] std::string movedFormula(std::string_view formula, std::int32_t rows, std::int32_t columns);

/// The formula of a cell that a sort moves by this many rows. It is moved as it is copied, so that a relative reference
/// goes along whatever row it names; what names another sheet stays.
/// @param sheet the name of the formula's own sheet
[[nodiscard]] std::string sortedFormula(std::string_view formula, std::int32_t rows, std::string_view sheet);

/// The value of a formula that is a constant: a number, a text, TRUE, FALSE, an error, NA(), TRUE() or FALSE().
/// @param formula without its equals sign.
[[nodiscard]] std::optional<Variant> constantFormula(std::string_view formula);

}  // namespace mervane::workbook
