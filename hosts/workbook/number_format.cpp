#include "hosts/workbook/number_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "hosts/workbook/format_section.h"
#include "hosts/workbook/number_text.h"

namespace mervane::workbook {

namespace {

constexpr std::array<std::pair<std::int32_t, std::string_view>, 28> builtIns{{
    {0, "General"},
    {1, "0"},
    {2, "0.00"},
    {3, "#,##0"},
    {4, "#,##0.00"},
    {9, "0%"},
    {10, "0.00%"},
    {11, "0.00E+00"},
    {12, "# ?/?"},
    {13, "# ?\?/?\?"},
    {14, "m/d/yyyy"},
    {15, "d-mmm-yy"},
    {16, "d-mmm"},
    {17, "mmm-yy"},
    {18, "h:mm AM/PM"},
    {19, "h:mm:ss AM/PM"},
    {20, "h:mm"},
    {21, "h:mm:ss"},
    {22, "m/d/yyyy h:mm"},
    {37, "#,##0_);(#,##0)"},
    {38, "#,##0_);[Red](#,##0)"},
    {39, "#,##0.00_);(#,##0.00)"},
    {40, "#,##0.00_);[Red](#,##0.00)"},
    {45, "mm:ss"},
    {46, "[h]:mm:ss"},
    {47, "mm:ss.0"},
    {48, "##0.0E+0"},
    {49, "@"},
}};

std::string fixed(double value, int decimals) {
  std::array<char, 400> text{};
  const auto [end, error] =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
  return error == std::errc{} ? std::string(text.data(), end) : std::string();
}

/// What General shows: up to eleven characters, an exponent for very large and very small numbers.
std::string general(double value) {
  const double size = std::fabs(value);
  if (value == 0.0) return "0";
  std::array<char, 64> text{};
  if (size >= 1e11 || size < 1e-9) {
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, 5);
    return error == std::errc{} ? std::string(text.data(), end) : std::string();
  }
  const int whole = size < 10.0 ? 1 : static_cast<int>(std::floor(std::log10(size))) + 1;
  // OPTIMIZATION: where a short form has no more digits than fit, nothing is left to be rounded.
  if (char* end = printShortDecimal(text.data(), value)) {
    const char* point = std::find(text.data(), end, '.');
    if (end - point <= std::max(0, 10 - whole) + 1) return {text.data(), end};
  }
  std::string shown = fixed(value, std::max(0, 10 - whole));
  if (shown.find('.') != std::string::npos) {
    shown.erase(shown.find_last_not_of('0') + 1);
    if (shown.back() == '.') shown.pop_back();
  }
  return shown;
}

bool isFixedCode(std::string_view code) {
  return !code.empty() && code.find_first_not_of("0#,.%") == std::string_view::npos &&
         code.find('0') != std::string_view::npos;
}

/// The value with the decimals and groups of a code of digits.
std::string fixedAs(double value, std::string_view code) {
  const std::size_t point = code.find('.');
  int decimals = 0;
  if (point != std::string_view::npos) {
    decimals = static_cast<int>(std::count_if(code.begin() + static_cast<std::ptrdiff_t>(point), code.end(),
                                              [](char c) { return c == '0' || c == '#'; }));
  }
  std::string shown = fixed(value, std::min(decimals, 30));
  if (code.find(',') == std::string_view::npos) return shown;
  std::size_t at = std::min(shown.find('.'), shown.size());
  const std::size_t first = shown.starts_with('-') ? 1 : 0;
  while (at > first + 3) {
    at -= 3;
    shown.insert(at, ",");
  }
  return shown;
}

/// A code without quoted words, colours, conditions and escapes: what is left are its signs.
std::string signsOf(std::string_view code) {
  std::string signs;
  for (std::size_t i = 0; i < code.size(); ++i) {
    switch (code[i]) {
      case '"': {
        const std::size_t close = code.find('"', i + 1);
        if (close == std::string_view::npos) return signs;
        i = close;
        break;
      }
      case '\\':
      case '_':
      case '*':
        ++i;
        break;
      case '[': {
        const std::size_t close = code.find(']', i + 1);
        if (close == std::string_view::npos) return signs;
        const std::string_view inside = code.substr(i + 1, close - i - 1);
        // An elapsed time, such as [h] or [mm], is the one thing in brackets that is a sign.
        if (!inside.empty() && inside.find_first_not_of("hHmMsS") == std::string_view::npos) signs += inside;
        i = close;
        break;
      }
      case ';':
        return signs;  // NB: the first section decides.
      default:
        signs += code[i];
    }
  }
  return signs;
}

}  // namespace

std::string_view builtInFormat(std::int32_t number) noexcept {
  for (const auto& [one, code] : builtIns) {
    if (one == number) return code;
  }
  return "General";
}

std::int32_t builtInNumber(std::string_view code) noexcept {
  for (const auto& [number, one] : builtIns) {
    if (one == code) return number;
  }
  return -1;
}

bool isDateFormat(std::int32_t number, std::string_view code) noexcept {
  // The numbers 27 to 36 and 50 to 58 are dates of eastern languages, whose codes files do not hold.
  if ((number >= 14 && number <= 22) || (number >= 27 && number <= 36) || (number >= 45 && number <= 47) ||
      (number >= 50 && number <= 58)) {
    return true;
  }
  if (number < 50) return false;
  std::string signs = signsOf(code);
  std::transform(signs.begin(), signs.end(), signs.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (signs.find("general") != std::string::npos) return false;
  return signs.find_first_of("dmyhs") != std::string::npos;
}

std::string shownNumber(double value, std::string_view code) {
  if (code == "General" || code.empty()) return general(value);
  if (isFixedCode(code)) {
    const bool isPercent = code.find('%') != std::string_view::npos;
    const std::string shown = fixedAs(isPercent ? value * 100.0 : value, code);
    return isPercent ? shown + "%" : shown;
  }
  if (isDateFormat(1000, code)) return std::string(std::max<std::size_t>(signsOf(code).size() + 1, 5), '0');
  const std::optional<FormatSection> section = sectionFor(value, code);
  if (!section) return general(value);
  if (section->digits.empty()) return section->before;
  const double shown = section->isPercent ? value * 100.0 : value;
  return section->before + fixedAs(section->showsSign ? shown : std::fabs(shown), section->digits) + section->after;
}

std::string_view longestShown(double value, std::string_view code) noexcept {
  const double size = std::fabs(value);
  if ((code != "General" && !code.empty()) || !(size < 1e10) || (size < 1e-9 && value != 0.0)) return {};
  return value < 0.0 ? "-0000000000." : "0000000000.";
}

double isoDateSerial(std::string_view text, bool from1904) noexcept {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  const auto number = [&](std::size_t at, std::size_t length) {
    int value = -1;
    if (at + length > text.size()) return -1;
    const auto [end, error] = std::from_chars(text.data() + at, text.data() + at + length, value);
    return error == std::errc{} && end == text.data() + at + length ? value : -1;
  };
  double serial = 0.0;
  std::size_t timeAt = 0;
  if (text.size() >= 10 && text[4] == '-' && text[7] == '-') {
    const int year = number(0, 4);
    if (year < 0) return none;
    const std::chrono::year_month_day day{std::chrono::year{year},
                                          std::chrono::month{static_cast<unsigned>(number(5, 2))},
                                          std::chrono::day{static_cast<unsigned>(number(8, 2))}};
    if (!day.ok()) return none;
    const std::chrono::sys_days zero = std::chrono::year{1899} / 12 / 30;
    serial = static_cast<double>((std::chrono::sys_days{day} - zero).count());
    if (from1904) serial -= 1462.0;
    if (text.size() == 10) return serial;
    if (text[10] != 'T' && text[10] != ' ') return none;
    timeAt = 11;
  }
  const int hours = number(timeAt, 2);
  const int minutes = number(timeAt + 3, 2);
  const int seconds = text.size() >= timeAt + 8 ? number(timeAt + 6, 2) : 0;
  if (hours < 0 || hours > 24 || minutes < 0 || minutes > 59 || seconds < 0 || seconds > 60) return none;
  double fraction = 0.0;
  if (text.size() > timeAt + 9 && text[timeAt + 8] == '.') {
    double scale = 0.1;
    for (const char c : text.substr(timeAt + 9)) {
      if (c < '0' || c > '9') break;
      fraction += (c - '0') * scale;
      scale /= 10.0;
    }
  }
  return serial + (hours * 3600.0 + minutes * 60.0 + seconds + fraction) / 86400.0;
}

}  // namespace mervane::workbook
