#include "mervane/utf16.h"

#include <cstddef>
#include <cstdint>

namespace mervane {
namespace {

constexpr char32_t replacement = 0xFFFD;

bool isHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Reads one code point and moves the position behind it; a malformed sequence moves by one byte.
char32_t readUtf8(std::string_view text, std::size_t& position) {
  const auto byteAt = [&](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
  const std::uint8_t first = byteAt(position++);
  if (first < 0x80) return first;
  std::size_t following = 0;
  char32_t point = 0;
  char32_t smallest = 0;
  if ((first & 0xE0U) == 0xC0) {
    following = 1;
    point = first & 0x1FU;
    smallest = 0x80;
  } else if ((first & 0xF0U) == 0xE0) {
    following = 2;
    point = first & 0x0FU;
    smallest = 0x800;
  } else if ((first & 0xF8U) == 0xF0) {
    following = 3;
    point = first & 0x07U;
    smallest = 0x10000;
  } else {
    return replacement;
  }
  if (following > text.size() - position) return replacement;
  for (std::size_t i = 0; i < following; ++i) {
    const std::uint8_t next = byteAt(position + i);
    if ((next & 0xC0U) != 0x80) return replacement;
    point = (point << 6U) | (next & 0x3FU);
  }
  if (point < smallest || point > 0x10FFFF || isHighSurrogate(point) || isLowSurrogate(point)) return replacement;
  position += following;
  return point;
}

}  // namespace

void appendUtf8(std::string& text, char32_t point) {
  const auto append = [&](char32_t byte) { text.push_back(static_cast<char>(static_cast<std::uint8_t>(byte))); };
  if (point < 0x80) {
    append(point);
  } else if (point < 0x800) {
    append(0xC0U | (point >> 6U));
    append(0x80U | (point & 0x3FU));
  } else if (point < 0x10000) {
    append(0xE0U | (point >> 12U));
    append(0x80U | ((point >> 6U) & 0x3FU));
    append(0x80U | (point & 0x3FU));
  } else {
    append(0xF0U | (point >> 18U));
    append(0x80U | ((point >> 12U) & 0x3FU));
    append(0x80U | ((point >> 6U) & 0x3FU));
    append(0x80U | (point & 0x3FU));
  }
}

std::u16string toUtf16(std::string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const char32_t point = readUtf8(text, position);
    if (point < 0x10000) {
      result.push_back(static_cast<char16_t>(point));
    } else {
      result.push_back(static_cast<char16_t>(0xD800U + ((point - 0x10000U) >> 10U)));
      result.push_back(static_cast<char16_t>(0xDC00U + ((point - 0x10000U) & 0x3FFU)));
    }
  }
  return result;
}

std::string toUtf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t point = text[i];
    if (isHighSurrogate(point) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
      point = 0x10000U + ((point - 0xD800U) << 10U) + (text[++i] - 0xDC00U);
    } else if (isHighSurrogate(point) || isLowSurrogate(point)) {
      point = replacement;
    }
    appendUtf8(result, point);
  }
  return result;
}

}  // namespace mervane
