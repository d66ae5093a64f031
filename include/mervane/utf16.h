#pragma once

#include <string>
#include <string_view>

namespace mervane {

/// Text is UTF-8 inside the system and UTF-16 at the platform borders. What is malformed on either side
/// becomes U+FFFD, so a conversion never fails.
[[nodiscard]] std::u16string toUtf16(std::string_view text);
[[nodiscard]] std::string toUtf8(std::u16string_view text);

/// Appends one character in UTF-8.
/// @param point at most 0x10FFFF; not checked. Half of a surrogate pair becomes bytes that are no text.
void appendUtf8(std::string& text, char32_t point);

}  // namespace mervane
