#pragma once

#include <string>
#include <string_view>

namespace mervane::cli {

/// A text as a JSON string, quotes included. The text is UTF-8.
[[nodiscard]] std::string jsonString(std::string_view text);

}  // namespace mervane::cli
