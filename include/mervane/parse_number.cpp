#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <system_error>

#include "mervane/convert.h"

namespace mervane {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

int digitValue(char c) {
  if (isDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return 99;
}

/// Significant digits as a whole number, and the power of ten that it is multiplied with.
struct Decimal {
  std::string digits;
  std::int64_t exponent = 0;
};

/// Reads one text from its first to its last character.
class NumberReader {
 public:
  NumberReader(std::string_view text, const Locale& locale) : rest_(text), locale_(locale) {}

  std::optional<double> read() {
    while (takeBlank() || takeSign() || takeCurrency() || take("(", open_)) continue;
    const std::optional<double> magnitude = rest_.starts_with('&') ? readPattern() : readDecimal();
    if (!magnitude) return std::nullopt;
    while (takeBlank() || takeSign() || takeCurrency() || (open_ && take(")", closed_))) continue;
    if (!rest_.empty() || open_ != closed_ || (open_ && signed_)) return std::nullopt;
    return negative_ || open_ ? -*magnitude : *magnitude;
  }

 private:
  bool take(std::string_view part) {
    if (part.empty() || !rest_.starts_with(part)) return false;
    rest_.remove_prefix(part.size());
    return true;
  }

  /// For what may stand once in a text: @param taken says whether it has been there.
  bool take(std::string_view part, bool& taken) {
    if (taken || !take(part)) return false;
    taken = true;
    return true;
  }

  bool takeBlank() {
    constexpr std::string_view blanks[] = {" ", "\t", "\r", "\n", "\v", "\f", "\u00A0", "\u202F"};
    return std::ranges::any_of(blanks, [&](std::string_view blank) { return take(blank); });
  }

  bool takeSign() {
    if (take("+", signed_)) return true;
    if (!take("-", signed_)) return false;
    negative_ = true;
    return true;
  }

  bool takeCurrency() { return take(locale_.currencySymbol, currency_); }

  /// A group separator counts only between two digits; anything else may be a blank behind the number.
  bool takeGroupSeparator() {
    return std::ranges::any_of(locale_.groupSeparators, [&](const std::string& separator) {
      const bool digitBehind = rest_.size() > separator.size() && isDigit(rest_[separator.size()]);
      return digitBehind && take(separator);
    });
  }

  void takeDigit(Decimal& number) {
    if (!number.digits.empty() || rest_.front() != '0') number.digits += rest_.front();
    rest_.remove_prefix(1);
  }

  /// "&H1F", "&O17" and "&17": a pattern of 32 bits.
  std::optional<double> readPattern() {
    rest_.remove_prefix(1);
    const bool hexadecimal = take("H") || take("h");
    if (!hexadecimal && !take("O")) (void)take("o");
    const int base = hexadecimal ? 16 : 8;
    std::uint64_t pattern = 0;
    bool found = false;
    for (; !rest_.empty() && digitValue(rest_.front()) < base; rest_.remove_prefix(1)) {
      found = true;
      pattern = pattern * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(digitValue(rest_.front()));
      if (pattern > 0xFFFFFFFFU) raise(runtime::overflow);
    }
    if (!found) return std::nullopt;
    const bool negative = pattern > 0x7FFFFFFFU;
    return static_cast<double>(static_cast<std::int64_t>(pattern) - (negative ? std::int64_t{1} << 32 : 0));
  }

  std::optional<double> readDecimal() {
    Decimal number;
    bool found = false;
    while (!rest_.empty() && (isDigit(rest_.front()) || (found && takeGroupSeparator()))) {
      found = true;
      takeDigit(number);
    }
    if (take(locale_.decimalSeparator)) {
      for (; !rest_.empty() && isDigit(rest_.front()); found = true) {
        takeDigit(number);
        --number.exponent;
      }
    }
    if (!found) return std::nullopt;
    number.exponent += readExponent();
    return valueOf(number);
  }

  /// The power behind E or D; where no digit follows, the letter is left for what comes next.
  std::int64_t readExponent() {
    if (rest_.empty() || std::string_view("eEdD").find(rest_.front()) == std::string_view::npos) return 0;
    std::string_view rest = rest_.substr(1);
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+')) rest.remove_prefix(1);
    if (rest.empty() || !isDigit(rest.front())) return 0;
    // Far beyond any power that a text's own digits could bring back into the range.
    constexpr std::int64_t limit = std::int64_t{1} << 52;
    std::int64_t exponent = 0;
    for (; !rest.empty() && isDigit(rest.front()); rest.remove_prefix(1)) {
      if (exponent < limit) exponent = exponent * 10 + digitValue(rest.front());
    }
    rest_ = rest;
    return negative ? -exponent : exponent;
  }

  static double valueOf(Decimal number) {
    if (number.digits.empty()) return 0.0;
    // Powers of ten of the first digit that are safely outside the double range on either side.
    constexpr std::int64_t highest = 309;
    constexpr std::int64_t lowest = -400;
    const std::int64_t power = static_cast<std::int64_t>(number.digits.size()) - 1 + number.exponent;
    if (power > highest) raise(runtime::overflow);
    if (power < lowest) return 0.0;
    std::array<char, 24> exponent{'e'};
    char* const power10 = exponent.data() + 1;
    char* const end = std::to_chars(power10, exponent.data() + exponent.size(), number.exponent).ptr;
    number.digits.append(exponent.data(), end);
    double value = 0.0;
    const char* const first = number.digits.data();
    const std::from_chars_result result = std::from_chars(first, first + number.digits.size(), value);
    const bool outside = result.ec == std::errc::result_out_of_range;
    if ((outside && power > 0) || std::isinf(value)) raise(runtime::overflow);
    return outside ? 0.0 : value;
  }

  std::string_view rest_;
  const Locale& locale_;
  bool signed_ = false;
  bool negative_ = false;
  bool currency_ = false;
  bool open_ = false;
  bool closed_ = false;
};

}  // namespace

std::optional<double> parseNumber(std::string_view text, const Locale& locale) {
  return NumberReader(text, locale).read();
}

}  // namespace mervane
