#pragma once

#include <string>
#include <string_view>

namespace mervane::workbook {

/// The text without differences of case, in any script, and with its accents composed: two names are the same name
/// where this is equal. Text that is no UTF-8 stays as it is.
[[nodiscard]] std::string caseFolded(std::string_view text);

}  // namespace mervane::workbook
