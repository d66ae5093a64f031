#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "mervane/convert.h"

namespace mervane {

namespace {

std::string notFinite(double value) {
  if (std::isnan(value)) return "-1.#IND";
  return value > 0 ? "1.#INF" : "-1.#INF";
}

/// A decimal point behind the first `whole` digits, and none where nothing would follow it.
std::string pointed(const std::string& digits, std::size_t whole, const Locale& locale) {
  if (digits.size() <= whole) return digits + std::string(whole - digits.size(), '0');
  return digits.substr(0, whole) + locale.decimalSeparator + digits.substr(whole);
}

/// The general form: plain while the power of ten lies between -5 and the number of digits, else with an exponent
/// of at least two digits.
std::string generalForm(double value, int significant, const Locale& locale) {
  if (!std::isfinite(value)) return notFinite(value);
  if (value == 0.0) return "0";
  std::array<char, 64> buffer{};
  char* const begin = buffer.data();
  char* const end =
      std::to_chars(begin, begin + buffer.size(), std::fabs(value), std::chars_format::scientific, significant - 1).ptr;
  const std::string text(begin, end);
  const std::size_t mark = text.find('e');
  std::string digits = text.substr(0, 1) + text.substr(2, mark - 2);
  digits.erase(digits.find_last_not_of('0') + 1);
  int power = 0;
  const std::size_t behindSign = mark + 2;
  std::from_chars(text.data() + behindSign, text.data() + text.size(), power);
  if (text[mark + 1] == '-') power = -power;

  const std::string sign = std::signbit(value) ? "-" : "";
  if (power < -4 || power >= significant)
    return sign + pointed(digits, 1, locale) + (power < 0 ? "E-" : "E+") + text.substr(behindSign);
  if (power < 0)
    return sign + "0" + locale.decimalSeparator + std::string(static_cast<std::size_t>(-power - 1), '0') + digits;
  return sign + pointed(digits, static_cast<std::size_t>(power) + 1, locale);
}

}  // namespace

std::string formatNumber(double value, const Locale& locale) {
  constexpr int digitsOfDouble = 15;
  return generalForm(value, digitsOfDouble, locale);
}

std::string formatSingle(float value, const Locale& locale) {
  constexpr int digitsOfSingle = 7;
  return generalForm(static_cast<double>(value), digitsOfSingle, locale);
}

std::string formatExact(double value) {
  std::array<char, 64> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

}  // namespace mervane
