#include "platform/windows/regional_settings.h"

#include <windows.h>

#include <string>

#include "platform/com/text.h"

namespace mervane::windows {
namespace {

std::wstring setting(LCTYPE which) {
  wchar_t buffer[128] = {};
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, which, buffer, 128);
  return length > 1 ? std::wstring(buffer, static_cast<std::size_t>(length - 1)) : std::wstring();
}

std::string text(LCTYPE which) {
  return com::fromWide(setting(which));
}

Locale::DateOrder dateOrder() {
  const std::wstring order = setting(LOCALE_IDATE);
  if (order == L"1") return Locale::DateOrder::dayMonthYear;
  if (order == L"2") return Locale::DateOrder::yearMonthDay;
  return Locale::DateOrder::monthDayYear;
}

}  // namespace

Locale userLocale() {
  // The words for true and false are no settings of the platform; they come with the language.
  Locale locale = localeNamed(text(LOCALE_SISO639LANGNAME) + "-" + text(LOCALE_SISO3166CTRYNAME));
  locale.name = text(LOCALE_SISO639LANGNAME) + "-" + text(LOCALE_SISO3166CTRYNAME);
  locale.decimalSeparator = text(LOCALE_SDECIMAL);
  locale.groupSeparators = {text(LOCALE_STHOUSAND)};
  locale.currencySymbol = text(LOCALE_SCURRENCY);
  locale.dateOrder = dateOrder();
  locale.dateSeparator = text(LOCALE_SDATE);
  const std::wstring shortDate = setting(LOCALE_SSHORTDATE);
  locale.padDate = shortDate.find(L"dd") != std::wstring::npos && shortDate.find(L"MM") != std::wstring::npos;
  locale.timeSeparator = text(LOCALE_STIME);
  const std::wstring timeForm = setting(LOCALE_STIMEFORMAT);
  locale.twelveHourClock = timeForm.find(L'h') != std::wstring::npos;
  locale.padHour = timeForm.find(L"hh") != std::wstring::npos || timeForm.find(L"HH") != std::wstring::npos;
  locale.am = text(LOCALE_S1159);
  locale.pm = text(LOCALE_S2359);
  return locale;
}

}  // namespace mervane::windows
