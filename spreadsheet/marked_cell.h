#pragma once

#include <cstdint>
#include <string_view>

namespace mervane::sheet {

/// A cell as a formula writes it: what is marked with "$" stays where the formula is copied elsewhere.
struct MarkedCell {
  bool fixedColumn = false;
  bool fixedRow = false;
  std::int32_t column = 0;
  std::int32_t row = 0;
};

/// Takes "$A$1" and the like off the begin; false leaves the text as it is.
[[nodiscard]] bool takeMarkedCell(std::string_view& text, MarkedCell& cell);

}  // namespace mervane::sheet
