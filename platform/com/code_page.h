#pragma once

#include <string>
#include <string_view>

namespace mervane::com {

/// Between UTF-8 and the system's 8-bit code page. What the code page lacks becomes its default character.
[[nodiscard]] std::string toCodePage(std::string_view text);
[[nodiscard]] std::string fromCodePage(std::string_view text);

}  // namespace mervane::com
