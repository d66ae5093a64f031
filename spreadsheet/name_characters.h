#pragma once

namespace mervane::sheet {

/// Characters of names and references in formulas, by their UTF-8 bytes.
[[nodiscard]] constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
[[nodiscard]] constexpr bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
[[nodiscard]] constexpr bool isNamePart(char c) {
  return isDigit(c) || isLetter(c) || c == '_' || c == '.' || c == '\\' || c == '?' ||
         static_cast<unsigned char>(c) >= 0x80;
}

}  // namespace mervane::sheet
