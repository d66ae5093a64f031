#pragma once

#include <string>
#include <vector>

namespace mervane {

/// The regional settings that conversions between text and numbers or dates depend on. Always passed
/// explicitly; nothing in the system reads the process's own locale. All texts are UTF-8.
struct Locale {
  enum class DateOrder { monthDayYear, dayMonthYear, yearMonthDay };

  std::string name = "en-US";
  std::string decimalSeparator = ".";
  /// Any of these is accepted between digits before the decimal separator; the first one is written.
  std::vector<std::string> groupSeparators = {","};
  std::string currencySymbol = "$";
  DateOrder dateOrder = DateOrder::monthDayYear;
  std::string dateSeparator = "/";
  /// Whether the short date form writes day and month with two digits.
  bool padDate = false;
  std::string timeSeparator = ":";
  bool twelveHourClock = true;
  std::string am = "AM";
  std::string pm = "PM";
  std::string trueWord = "True";
  std::string falseWord = "False";

  friend bool operator==(const Locale&, const Locale&) = default;
};

/// Settings of the United States, in which the system's own texts are written.
[[nodiscard]] const Locale& englishLocale();
/// A built-in locale by its tag, such as "de-DE" or "de_DE.UTF-8"; englishLocale() for an unknown one.
[[nodiscard]] const Locale& localeNamed(const std::string& tag);

}  // namespace mervane
