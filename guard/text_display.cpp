#include "guard/text_display.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace mervane::guard {
namespace {

constexpr std::string_view ellipsis = "\u2026";
constexpr std::string_view replacement = "\uFFFD";
constexpr std::size_t quotedLength = 40;

struct Character {
  std::string_view bytes;
  std::uint32_t codePoint = 0;
  bool wellFormed = false;
};

std::size_t lengthByLeadByte(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

/// The character at the front of a text that is not empty; a byte that begins none stands for itself.
Character firstCharacter(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lengthByLeadByte(lead);
  const Character malformed{text.substr(0, 1), 0xFFFD, false};
  if (length == 0 || length > text.size()) return malformed;
  if (length == 1) return {text.substr(0, 1), lead, true};
  std::uint32_t codePoint = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0U) != 0x80U) return malformed;
    codePoint = (codePoint << 6U) | (byte & 0x3FU);
  }
  constexpr std::array<std::uint32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
  if (codePoint < smallest[length] || codePoint > 0x10FFFF || surrogate) return malformed;
  return {text.substr(0, length), codePoint, true};
}

bool isControl(std::uint32_t c) {
  // Besides the two control blocks: line and paragraph separator and the marks that reorder text.
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029 || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069);
}

void appendPrintable(std::string& out, const Character& one) {
  if (!one.wellFormed) {
    out += replacement;
  } else if (!isControl(one.codePoint)) {
    out += one.bytes;
  } else if (one.codePoint < 0x20) {
    // The Unicode block of control pictures holds one for each of these, in their order.
    out += '\xE2';
    out += '\x90';
    out += static_cast<char>(0x80U + one.codePoint);
  } else {
    out += replacement;
  }
}

struct Span {
  std::uint32_t first;
  std::uint32_t last;
};

constexpr std::array zeroWidth{Span{0x0300, 0x036F}, Span{0x200B, 0x200F}, Span{0x20D0, 0x20FF}, Span{0xFE00, 0xFE0F},
                               Span{0xFE20, 0xFE2F}};
constexpr std::array doubleWidth{
    Span{0x1100, 0x115F}, Span{0x2E80, 0x303E},   Span{0x3041, 0x33FF},   Span{0x3400, 0x4DBF},  Span{0x4E00, 0x9FFF},
    Span{0xA000, 0xA4CF}, Span{0xAC00, 0xD7A3},   Span{0xF900, 0xFAFF},   Span{0xFE30, 0xFE6F},  Span{0xFF00, 0xFF60},
    Span{0xFFE0, 0xFFE6}, Span{0x1F300, 0x1F64F}, Span{0x1F900, 0x1F9FF}, Span{0x20000, 0x3FFFD}};

template <std::size_t count>
bool isIn(const std::array<Span, count>& spans, std::uint32_t c) {
  return std::ranges::any_of(spans, [c](const Span& span) { return c >= span.first && c <= span.last; });
}

std::size_t widthOf(std::uint32_t c) {
  if (isIn(zeroWidth, c)) return 0;
  return isIn(doubleWidth, c) ? 2 : 1;
}

}  // namespace

std::string printable(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const Character one = firstCharacter(text);
    appendPrintable(out, one);
    text.remove_prefix(one.bytes.size());
  }
  return out;
}

std::string quoted(std::string_view text) {
  std::string out = "\"";
  for (std::size_t i = 0; !text.empty(); ++i) {
    if (i == quotedLength) {
      out += ellipsis;
      break;
    }
    const Character one = firstCharacter(text);
    appendPrintable(out, one);
    text.remove_prefix(one.bytes.size());
  }
  return out + '"';
}

std::string nameForMessage(std::string_view name) {
  const auto plain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.' ||
           c == '-';
  };
  const bool isWord = !name.empty() && name.size() <= quotedLength && std::ranges::all_of(name, plain);
  return isWord ? std::string(name) : quoted(name);
}

std::size_t displayWidth(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) {
    const Character one = firstCharacter(text);
    width += widthOf(one.codePoint);
    text.remove_prefix(one.bytes.size());
  }
  return width;
}

std::string cutToWidth(std::string_view text, std::size_t width) {
  std::string whole = printable(text);
  if (displayWidth(whole) <= width) return whole;
  std::string out;
  std::string_view rest = whole;
  std::size_t used = 0;
  while (!rest.empty()) {
    const Character one = firstCharacter(rest);
    if (used + widthOf(one.codePoint) + 1 > width) break;
    used += widthOf(one.codePoint);
    out += one.bytes;
    rest.remove_prefix(one.bytes.size());
  }
  return width == 0 ? std::string() : out + std::string(ellipsis);
}

bool isUtf8(std::string_view text) noexcept {
  while (!text.empty()) {
    const Character one = firstCharacter(text);
    if (!one.wellFormed) return false;
    text.remove_prefix(one.bytes.size());
  }
  return true;
}

std::string decimal(long long number) {
  std::array<char, 24> digits{};
  const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  return {digits.data(), result.ptr};
}

std::string grouped(long long number) {
  std::string digits = decimal(number);
  const std::size_t first = number < 0 ? 1 : 0;
  for (std::size_t i = digits.size(); i > first + 3;) {
    i -= 3;
    digits.insert(i, 1, ' ');
  }
  return digits;
}

std::string counted(long long number, std::string_view singular, std::string_view plural) {
  return grouped(number) + " " + std::string(number == 1 ? singular : plural);
}

}  // namespace mervane::guard
