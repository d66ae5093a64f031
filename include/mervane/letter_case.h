#pragma once

#include <string>
#include <string_view>

namespace mervane {

/// The lower-case form of a UTF-8 text in any script, character for character and independent of the locale, so
/// that two names that differ in case alone become equal. Bytes that are no UTF-8 stay as they are.
[[nodiscard]] std::string lowered(std::string_view text);

}  // namespace mervane
