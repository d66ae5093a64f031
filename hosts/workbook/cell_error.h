#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace mervane::workbook {

/// The code of an error as cells write it, such as 2042 for "#N/A".
[[nodiscard]] std::optional<std::int32_t> errorCode(std::string_view text) noexcept;
/// The other way round; "#VALUE!" for a code that is none.
[[nodiscard]] std::string_view errorText(std::int32_t code) noexcept;

}  // namespace mervane::workbook
