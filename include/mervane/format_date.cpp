#include <chrono>
#include <cmath>
#include <cstdint>
#include <string>

#include "mervane/convert.h"

namespace mervane {

namespace {

constexpr std::int32_t secondsOfDay = 86400;
constexpr double firstSerial = -657434.0;       // 1 January 100
constexpr double behindLastSerial = 2958466.0;  // 1 January 10000

/// Whole days since 1899-12-30 and seconds since midnight.
struct Moment {
  std::int32_t day;
  std::int32_t second;
};

// The fraction is the time of day also before day 0: -1.25 is six in the morning of the day before.
Moment momentOf(Date date) {
  const double days = std::trunc(date.serial);
  if (!(days >= firstSerial && date.serial < behindLastSerial)) raise(runtime::overflow);
  const double seconds = std::fabs(date.serial - days) * secondsOfDay;
  Moment moment{static_cast<std::int32_t>(days), static_cast<std::int32_t>(std::floor(seconds + 0.5))};
  if (moment.second == secondsOfDay) {
    // Rounded up to midnight. The last day of all has none to follow and keeps its last second.
    moment.second = days + 1 < behindLastSerial ? 0 : secondsOfDay - 1;
    if (moment.second == 0) ++moment.day;
  }
  return moment;
}

std::string padded(std::int32_t number, std::size_t width) {
  std::string digits;
  do {
    digits.insert(digits.begin(), static_cast<char>('0' + number % 10));
    number /= 10;
  } while (number != 0);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

std::string dateText(const Moment& moment, const Locale& locale) {
  namespace chrono = std::chrono;
  constexpr chrono::sys_days dayZero{chrono::year{1899} / chrono::December / chrono::day{30}};
  const chrono::year_month_day calendar{dayZero + chrono::days{moment.day}};
  const std::size_t width = locale.padDate ? 2 : 1;
  const std::string yearText = padded(static_cast<int>(calendar.year()), 4);
  const std::string monthText = padded(static_cast<std::int32_t>(static_cast<unsigned>(calendar.month())), width);
  const std::string dayText = padded(static_cast<std::int32_t>(static_cast<unsigned>(calendar.day())), width);
  const std::string& mark = locale.dateSeparator;
  switch (locale.dateOrder) {
    case Locale::DateOrder::dayMonthYear:
      return dayText + mark + monthText + mark + yearText;
    case Locale::DateOrder::yearMonthDay:
      return yearText + mark + monthText + mark + dayText;
    case Locale::DateOrder::monthDayYear:
      break;
  }
  return monthText + mark + dayText + mark + yearText;
}

std::string timeText(const Moment& moment, const Locale& locale) {
  const std::int32_t hour = moment.second / 3600;
  const std::int32_t shownHour = locale.twelveHourClock ? (hour + 11) % 12 + 1 : hour;
  std::string text = padded(shownHour, locale.padHour ? 2 : 1);
  text += locale.timeSeparator + padded(moment.second / 60 % 60, 2);
  text += locale.timeSeparator + padded(moment.second % 60, 2);
  if (locale.twelveHourClock) text += " " + (hour < 12 ? locale.am : locale.pm);
  return text;
}

}  // namespace

std::string formatDate(Date date, const Locale& locale) {
  return dateText(momentOf(date), locale);
}

std::string formatTime(Date date, const Locale& locale) {
  return timeText(momentOf(date), locale);
}

std::string formatDateAndTime(Date date, const Locale& locale) {
  const Moment moment = momentOf(date);
  if (moment.day == 0) return timeText(moment, locale);
  if (moment.second == 0) return dateText(moment, locale);
  return dateText(moment, locale) + " " + timeText(moment, locale);
}

}  // namespace mervane
