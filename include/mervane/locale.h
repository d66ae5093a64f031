#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace mervane {

/// The regional settings that conversions between text and numbers or dates depend on. Always passed
/// explicitly; nothing in the system reads the process's own locale. All texts are UTF-8.
struct Locale {
  enum class DateOrder { monthDayYear, dayMonthYear, yearMonthDay };

  std::string name = "en-US";
  std::string decimalSeparator = ".";
  /// Any of these is accepted between two digits before the decimal separator, wherever it stands; numbers are
  /// written without one. NB: "1,5" thus reads as 15 where the comma parts groups, as the platform has it. Who reads
  /// data files, in which such a text is a slip, clears the list.
  std::vector<std::string> groupSeparators = {","};
  /// Accepted once before or behind a number; never written.
  std::string currencySymbol = "$";
  DateOrder dateOrder = DateOrder::monthDayYear;
  std::string dateSeparator = "/";
  /// Whether the short date form writes day and month with two digits.
  bool padDate = false;
  std::string timeSeparator = ":";
  bool twelveHourClock = true;
  /// Whether the time form writes the hour with two digits.
  bool padHour = false;
  std::string am = "AM";
  std::string pm = "PM";
  std::string trueWord = "True";
  std::string falseWord = "False";

  friend bool operator==(const Locale&, const Locale&) = default;
};

/// Settings of the United States, in which the system's own texts are written.
[[nodiscard]] const Locale& englishLocale();
/// A built-in locale by its tag, such as "de-DE", "de_DE.UTF-8" or "de", in any case. Where only the language is
/// known, its first locale; englishLocale() for an unknown one.
[[nodiscard]] const Locale& localeNamed(std::string_view tag);
/// All built-in locales, englishLocale() first.
[[nodiscard]] std::span<const Locale> builtInLocales();

}  // namespace mervane
