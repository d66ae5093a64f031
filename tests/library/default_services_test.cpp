#include "library/default_services.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>

#include "mervane/convert.h"

namespace mervane {
namespace {

// Another road to the same number: the calendar of the standard library.
double localSerial() {
  using namespace std::chrono;
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);
  const year_month_day date{year{local.tm_year + 1900}, month{static_cast<unsigned>(local.tm_mon + 1)},
                            day{static_cast<unsigned>(local.tm_mday)}};
  const auto days = (sys_days{date} - sys_days{year{1899} / December / day{30}}).count();
  return static_cast<double>(days) + (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / 86400.0;
}

TEST(DefaultServices, TheClockTellsLocalDateAndTime) {
  constexpr double halfASecond = 0.5 / 86400.0;
  const auto services = library::defaultServices();
  const double before = localSerial();
  const double now = services->clock->now().serial;
  const double after = localSerial();
  EXPECT_GE(now, before - halfASecond);
  EXPECT_LE(now, after + halfASecond);
}

TEST(DefaultServices, TextsAreEnglish) {
  EXPECT_EQ(library::defaultServices()->locale, englishLocale());
}

}  // namespace
}  // namespace mervane
