#include <limits>

#include "mervane/convert.h"
#include "tests/ground/raises.h"

namespace mervane {
namespace {

constexpr double afternoon = (15 * 3600 + 7 * 60 + 9) / 86400.0;
constexpr Date moment{38425 + afternoon};  // 14 March 2005, 3:07:09 PM

TEST(FormatDate, EachLocaleHasItsShortForms) {
  const struct {
    const char* locale;
    const char* date;
    const char* time;
  } cases[] = {
      {"en-US", "3/14/2005", "3:07:09 PM"}, {"en-GB", "14/03/2005", "15:07:09"}, {"de-DE", "14.03.2005", "15:07:09"},
      {"de-CH", "14.03.2005", "15:07:09"},  {"fr-FR", "14/03/2005", "15:07:09"}, {"sv-SE", "2005-03-14", "15:07:09"},
      {"pt-BR", "14/03/2005", "15:07:09"},  {"ru-RU", "14.03.2005", "15:07:09"}, {"hi-IN", "14-03-2005", "15:07:09"},
      {"ja-JP", "2005/03/14", "15:07:09"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(formatDate(moment, localeNamed(one.locale)), one.date) << one.locale;
    EXPECT_EQ(formatTime(moment, localeNamed(one.locale)), one.time) << one.locale;
  }
}

TEST(FormatDate, HoursAreCountedAsTheClockShowsThem) {
  EXPECT_EQ(formatTime(Date{0.0}, englishLocale()), "12:00:00 AM");
  EXPECT_EQ(formatTime(Date{0.5}, englishLocale()), "12:00:00 PM");
  EXPECT_EQ(formatTime(Date{13.0 / 24}, englishLocale()), "1:00:00 PM");
  EXPECT_EQ(formatTime(Date{9.0 / 24}, localeNamed("de-DE")), "09:00:00");
  EXPECT_EQ(formatTime(Date{9.0 / 24}, localeNamed("ru-RU")), "9:00:00");
}

TEST(FormatDate, DaysAreCountedFromTheEndOf1899) {
  const struct {
    double serial;
    const char* expected;
  } cases[] = {
      {0, "12/30/1899"},  {1, "12/31/1899"},    {2, "1/1/1900"},     {60, "2/28/1900"},       {61, "3/1/1900"},
      {-1, "12/29/1899"}, {36585, "2/29/2000"}, {36586, "3/1/2000"}, {2958465, "12/31/9999"}, {-657434, "1/1/0100"},
  };
  for (const auto& one : cases) EXPECT_EQ(formatDate(Date{one.serial}, englishLocale()), one.expected);
}

TEST(FormatDate, BeforeDayZeroTheFractionIsStillTheTimeOfDay) {
  EXPECT_EQ(formatDateAndTime(Date{-1.25}, englishLocale()), "12/29/1899 6:00:00 AM");
}

TEST(FormatDate, DateAndTimeLeaveOutWhatIsNothing) {
  EXPECT_EQ(formatDateAndTime(moment, englishLocale()), "3/14/2005 3:07:09 PM");
  EXPECT_EQ(formatDateAndTime(Date{38425}, englishLocale()), "3/14/2005");
  EXPECT_EQ(formatDateAndTime(Date{0.75}, englishLocale()), "6:00:00 PM");
  EXPECT_EQ(formatDateAndTime(Date{0}, englishLocale()), "12:00:00 AM");
}

TEST(FormatDate, ATimeThatRoundsUpToMidnightBelongsToTheNextDay) {
  EXPECT_EQ(formatDateAndTime(Date{38425 + 0.999999}, englishLocale()), "3/15/2005");
  EXPECT_EQ(formatDateAndTime(Date{-1.999999}, englishLocale()), "12:00:00 AM");
  EXPECT_EQ(formatDateAndTime(Date{2958465.999999}, englishLocale()), "12/31/9999 11:59:59 PM");
}

TEST(FormatDate, OutsideTheCalendarRaisesOverflow) {
  for (const double serial :
       {2958466.0, -657435.0, 1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
    expectRaises(runtime::overflow, [&] { (void)formatDate(Date{serial}, englishLocale()); });
}

}  // namespace
}  // namespace mervane
