#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/require.h"
#include "mervane/convert.h"
#include "mervane/failure.h"

namespace mervane {
namespace {

struct Reading {
  std::optional<double> number;
  bool overflow = false;
  friend bool operator==(const Reading&, const Reading&) = default;
};

/// Nothing but an overflow is ever raised.
Reading read(std::string_view text, const Locale& locale) {
  try {
    return {parseNumber(text, locale), false};
  } catch (const Failure& failure) {
    MERVANE_REQUIRE(failure.number() == runtime::overflow.number);
    return {std::nullopt, true};
  }
}

bool sameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// The exact form reads back as the same bits, everywhere.
void checkExactForm(double number) {
  const Reading again = read(formatExact(number), englishLocale());
  MERVANE_REQUIRE(again.number.has_value());
  MERVANE_REQUIRE(sameBits(*again.number, number));
}

/// The short form reads back as a number with the same short form, no further away than its digits allow.
void checkShortForm(double number, const Locale& locale) {
  constexpr double roundsUpBeyondTheRange = 1.79769313486231e308;
  const std::string shortForm = formatNumber(number, locale);
  const Reading again = read(shortForm, locale);
  if (std::fabs(number) > roundsUpBeyondTheRange && again.overflow) return;
  MERVANE_REQUIRE(again.number.has_value());
  MERVANE_REQUIRE(formatNumber(*again.number, locale) == shortForm);
  // Half of the last digit at its widest, and the half bit by which reading it rounds.
  constexpr double widestError = 5e-15 + 0x1p-53;
  MERVANE_REQUIRE(std::fabs(*again.number - number) <= std::fabs(number) * widestError);
}

/// The nearest integer, the even one of two, or an overflow exactly where that does not fit.
void checkRounding(double number) {
  const double below = std::floor(number);
  const double fraction = number - below;
  const bool up = fraction > 0.5 || (fraction == 0.5 && std::fmod(below, 2.0) != 0.0);
  const double nearest = up ? below + 1 : below;
  try {
    MERVANE_REQUIRE(static_cast<double>(roundToInt32(number)) == nearest);
  } catch (const Failure&) {
    MERVANE_REQUIRE(nearest < -2147483648.0 || nearest > 2147483647.0);
  }
}

void check(std::string_view text, const Locale& locale) {
  const Reading reading = read(text, locale);
  MERVANE_REQUIRE(isNumeric(text, locale) == reading.number.has_value());
  MERVANE_REQUIRE(read(" " + std::string(text) + "\t", locale) == reading);
  if (!reading.number) return;
  MERVANE_REQUIRE(std::isfinite(*reading.number));
  checkExactForm(*reading.number);
  checkShortForm(*reading.number, locale);
  checkRounding(*reading.number);
}

}  // namespace
}  // namespace mervane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  for (const mervane::Locale& locale : mervane::builtInLocales()) mervane::check(text, locale);
  return 0;
}
