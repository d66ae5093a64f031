#include <cfloat>
#include <cmath>
#include <limits>

#include "mervane/convert.h"
#include "tests/ground/raises.h"

namespace mervane {
namespace {

TEST(FormatNumber, PrintsUpToFifteenDigits) {
  const struct {
    double value;
    const char* expected;
  } cases[] = {
      {0.0, "0"},
      {-0.0, "0"},
      {1.0, "1"},
      {-1.5, "-1.5"},
      {100.0, "100"},
      {0.1, "0.1"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {2.0 / 3, "0.666666666666667"},
      {123456789012345.0, "123456789012345"},
      {1234567890123456.0, "1.23456789012346E+15"},
      {1e14, "100000000000000"},
      {1e15, "1E+15"},
      {999999999999999.5, "1E+15"},  // Rounding moves it over the border.
      {1e20, "1E+20"},
      {1e100, "1E+100"},
      {0.01, "0.01"},
      {0.0001, "0.0001"},
      {0.00001, "1E-05"},
      {0.000123456, "0.000123456"},
      {-1.5e-7, "-1.5E-07"},
      {1.79769313486232E+307, "1.79769313486232E+307"},
      {DBL_MAX, "1.79769313486232E+308"},
      {0x1p-1074, "4.94065645841247E-324"},
  };
  for (const auto& one : cases) EXPECT_EQ(formatNumber(one.value, englishLocale()), one.expected);
}

TEST(FormatNumber, TheDecimalSeparatorIsTheLocales) {
  EXPECT_EQ(formatNumber(-1234.5, localeNamed("de-DE")), "-1234,5");
  EXPECT_EQ(formatNumber(0.005, localeNamed("fr-FR")), "0,005");
  EXPECT_EQ(formatNumber(1.5e30, localeNamed("ru-RU")), "1,5E+30");
  EXPECT_EQ(formatNumber(1234.5, localeNamed("de-CH")), "1234.5");
}

TEST(FormatNumber, WhatIsNotFiniteHasAFixedText) {
  EXPECT_EQ(formatNumber(std::numeric_limits<double>::infinity(), localeNamed("de-DE")), "1.#INF");
  EXPECT_EQ(formatNumber(-std::numeric_limits<double>::infinity(), englishLocale()), "-1.#INF");
  EXPECT_EQ(formatNumber(std::numeric_limits<double>::quiet_NaN(), englishLocale()), "-1.#IND");
}

TEST(FormatSingle, PrintsUpToSevenDigits) {
  EXPECT_EQ(formatSingle(0.1F, englishLocale()), "0.1");
  EXPECT_EQ(formatSingle(1.0F / 3, localeNamed("de-DE")), "0,3333333");
  EXPECT_EQ(formatSingle(1234567.0F, englishLocale()), "1234567");
  EXPECT_EQ(formatSingle(16777216.0F, englishLocale()), "1.677722E+07");
  EXPECT_EQ(formatSingle(-0.0F, englishLocale()), "0");
}

TEST(FormatExact, ReadsBackAsTheSameDouble) {
  for (const double value : {0.1, 1.0 / 3, 1e23, 0x1p-1074, DBL_MAX, -123456789.125, 9007199254740993.0, 5e-5})
    EXPECT_EQ(parseNumber(formatExact(value), englishLocale()), value);
  EXPECT_EQ(formatExact(0.1), "0.1");
  EXPECT_EQ(formatExact(0.495), "0.495");
}

}  // namespace
}  // namespace mervane
