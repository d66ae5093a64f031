#include "hosts/workbook/number_text.h"

#include <charconv>
#include <cmath>
#include <cstdint>

namespace mervane::workbook {

char* printShortDecimal(char* to, double value) noexcept {
  constexpr std::int64_t parts = 10'000;
  constexpr double bound = 1e11;
  const double size = std::fabs(value);
  if (!(size < bound) || (size == 0.0 && std::signbit(value))) return nullptr;
  // Fewer than sixteen digits: the number of parts is exact, and where dividing gives the number back, no other text
  // of so few digits reads as it, so none is shorter.
  const double scaled = size * static_cast<double>(parts);
  auto count = static_cast<std::int64_t>(scaled);
  if (scaled - static_cast<double>(count) >= 0.5) ++count;
  if (static_cast<double>(count) / static_cast<double>(parts) != size) return nullptr;
  if (value < 0.0) *to++ = '-';
  to = std::to_chars(to, to + longestNumberText, count / parts).ptr;
  auto rest = static_cast<std::int32_t>(count % parts);
  if (rest == 0) return to;
  *to++ = '.';
  for (std::int32_t place = static_cast<std::int32_t>(parts) / 10; rest > 0; place /= 10) {
    *to++ = static_cast<char>('0' + rest / place);
    rest %= place;
  }
  return to;
}

char* printNumber(char* to, double value) noexcept {
  if (char* end = printShortDecimal(to, value)) return end;
  return std::to_chars(to, to + longestNumberText, value).ptr;
}

}  // namespace mervane::workbook
