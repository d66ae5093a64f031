#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "spreadsheet/marked_cell.h"

namespace mervane::hosts {

/// Cells that a formula names by their place.
struct FormulaReference {
  enum class Form : std::uint8_t {
    cells,    ///< "B2", "$B2:C$5"
    columns,  ///< "B:C"; the rows of the corners mean nothing
    rows      ///< "2:5"; the columns of the corners mean nothing
  };

  std::size_t begin = 0;   ///< of the cells in the formula, behind the sheet and its exclamation mark
  std::size_t length = 0;  ///< without the sheet
  /// The sheets as the formula writes them: "Data", "'My data'", "Jan:Dec", "[1]Data"; empty for the formula's own.
  std::string_view sheet;
  Form form = Form::cells;
  bool isPair = false;
  sheet::MarkedCell first;
  sheet::MarkedCell second;  ///< the same as the first where there is no pair

  /// The rows that it reaches, whatever order its corners stand in; all rows of a sheet for columns.
  [[nodiscard]] std::int32_t topRow() const noexcept;
  [[nodiscard]] std::int32_t bottomRow() const noexcept;
  [[nodiscard]] std::int32_t leftColumn() const noexcept;
  [[nodiscard]] std::int32_t rightColumn() const noexcept;
};

/// The references of a formula from left to right. Texts, names, functions and columns of tables hold none.
/// @param formula as a file holds it, without its equals sign. It must outlive what is answered.
[[nodiscard]] std::vector<FormulaReference> referencesIn(std::string_view formula);

}  // namespace mervane::hosts
