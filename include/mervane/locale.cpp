#include "mervane/locale.h"

#include <algorithm>

#include "mervane/letter_case.h"

namespace mervane {

namespace {

std::vector<Locale> makeLocales() {
  using Order = Locale::DateOrder;
  // Local, as the locales may be asked for while other files' constants are still being made.
  const std::vector<std::string> blanksAsGroups = {"\u00A0", "\u202F", " "};
  std::vector<Locale> all;
  all.push_back({});
  all.push_back({.name = "en-GB",
                 .currencySymbol = "£",
                 .dateOrder = Order::dayMonthYear,
                 .padDate = true,
                 .twelveHourClock = false,
                 .padHour = true});
  all.push_back({.name = "de-DE",
                 .decimalSeparator = ",",
                 .groupSeparators = {"."},
                 .currencySymbol = "€",
                 .dateOrder = Order::dayMonthYear,
                 .dateSeparator = ".",
                 .padDate = true,
                 .twelveHourClock = false,
                 .padHour = true,
                 .trueWord = "Wahr",
                 .falseWord = "Falsch"});
  all.push_back({.name = "de-CH",
                 .groupSeparators = {"’", "'"},
                 .currencySymbol = "CHF",
                 .dateOrder = Order::dayMonthYear,
                 .dateSeparator = ".",
                 .padDate = true,
                 .twelveHourClock = false,
                 .padHour = true,
                 .trueWord = "Wahr",
                 .falseWord = "Falsch"});
  all.push_back({.name = "fr-FR",
                 .decimalSeparator = ",",
                 .groupSeparators = {"\u202F", "\u00A0", " "},
                 .currencySymbol = "€",
                 .dateOrder = Order::dayMonthYear,
                 .padDate = true,
                 .twelveHourClock = false,
                 .padHour = true,
                 .trueWord = "Vrai",
                 .falseWord = "Faux"});
  all.push_back({.name = "sv-SE",
                 .decimalSeparator = ",",
                 .groupSeparators = blanksAsGroups,
                 .currencySymbol = "kr",
                 .dateOrder = Order::yearMonthDay,
                 .dateSeparator = "-",
                 .padDate = true,
                 .twelveHourClock = false,
                 .padHour = true,
                 .trueWord = "Sant",
                 .falseWord = "Falskt"});
  all.push_back({.name = "pt-BR",
                 .decimalSeparator = ",",
                 .groupSeparators = {"."},
                 .currencySymbol = "R$",
                 .dateOrder = Order::dayMonthYear,
                 .padDate = true,
                 .twelveHourClock = false,
                 .padHour = true,
                 .trueWord = "Verdadeiro",
                 .falseWord = "Falso"});
  all.push_back({.name = "ru-RU",
                 .decimalSeparator = ",",
                 .groupSeparators = blanksAsGroups,
                 .currencySymbol = "₽",
                 .dateOrder = Order::dayMonthYear,
                 .dateSeparator = ".",
                 .padDate = true,
                 .twelveHourClock = false,
                 .trueWord = "Истина",
                 .falseWord = "Ложь"});
  all.push_back({.name = "hi-IN",
                 .currencySymbol = "₹",
                 .dateOrder = Order::dayMonthYear,
                 .dateSeparator = "-",
                 .padDate = true,
                 .twelveHourClock = false,
                 .padHour = true});
  all.push_back({.name = "ja-JP",
                 .currencySymbol = "¥",
                 .dateOrder = Order::yearMonthDay,
                 .padDate = true,
                 .twelveHourClock = false});
  all.push_back({.name = "es-ES",
                 .decimalSeparator = ",",
                 .groupSeparators = {"."},
                 .currencySymbol = "€",
                 .dateOrder = Order::dayMonthYear,
                 .padDate = true,
                 .twelveHourClock = false,
                 .trueWord = "Verdadero",
                 .falseWord = "Falso"});
  all.push_back({.name = "it-IT",
                 .decimalSeparator = ",",
                 .groupSeparators = {"."},
                 .currencySymbol = "€",
                 .dateOrder = Order::dayMonthYear,
                 .padDate = true,
                 .twelveHourClock = false,
                 .padHour = true,
                 .trueWord = "Vero",
                 .falseWord = "Falso"});
  return all;
}

const std::vector<Locale>& locales() {
  static const std::vector<Locale> all = makeLocales();
  return all;
}

// "de_DE.UTF-8@euro" becomes "de-de".
std::string normalised(std::string_view tag) {
  std::string result = lowered(tag.substr(0, tag.find_first_of(".@")));
  std::ranges::replace(result, '_', '-');
  return result;
}

}  // namespace

const Locale& englishLocale() {
  return locales().front();
}

const Locale& localeNamed(std::string_view tag) {
  const std::string wanted = normalised(tag);
  const auto exact = std::ranges::find(locales(), wanted, [](const Locale& one) { return normalised(one.name); });
  if (exact != locales().end()) return *exact;
  const std::string language = wanted.substr(0, wanted.find('-'));
  const auto related = std::ranges::find_if(
      locales(), [&](const Locale& one) { return one.name.substr(0, one.name.find('-')) == language; });
  return related != locales().end() ? *related : englishLocale();
}

std::span<const Locale> builtInLocales() {
  return locales();
}

}  // namespace mervane
