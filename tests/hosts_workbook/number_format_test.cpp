#include "hosts/workbook/number_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>

namespace mervane::workbook {
namespace {

/// General by the long road: all its decimals printed, and the zeros at the end taken off again.
std::string generalAtLength(double value) {
  const double size = std::fabs(value);
  const int whole = size < 10.0 ? 1 : static_cast<int>(std::floor(std::log10(size))) + 1;
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", std::max(0, 10 - whole), value);
  std::string shown = text;
  if (shown.find('.') != std::string::npos) {
    shown.erase(shown.find_last_not_of('0') + 1);
    if (shown.back() == '.') shown.pop_back();
  }
  return shown;
}

TEST(NumberFormat, GeneralShowsUpToElevenCharacters) {
  EXPECT_EQ(shownNumber(0.0, "General"), "0");
  EXPECT_EQ(shownNumber(12.5, "General"), "12.5");
  EXPECT_EQ(shownNumber(-0.1, ""), "-0.1");
  EXPECT_EQ(shownNumber(1.0 / 3.0, "General"), "0.333333333");
  EXPECT_EQ(shownNumber(200000.0 / 3.0, "General"), "66666.66667");
  EXPECT_EQ(shownNumber(1234567890.123, "General"), "1234567890");
  EXPECT_EQ(shownNumber(99999999999.0, "General"), "99999999999");
  EXPECT_EQ(shownNumber(9.99999999996, "General"), "10");
  EXPECT_EQ(shownNumber(1e-9, "General"), "0.000000001");
}

TEST(NumberFormat, ShortNumbersAreShownAsIfAllDecimalsHadBeenPrinted) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> exponent(-8.9, 9.9);
  for (int i = 0; i < 20000; ++i) {
    const double full = std::pow(10.0, exponent(random)) * (i % 2 == 0 ? 1.0 : -1.0);
    const double scale = std::pow(10.0, i % 11);
    for (const double value : {full, std::round(full * scale) / scale}) {
      if (std::fabs(value) < 1e-9) continue;
      ASSERT_EQ(shownNumber(value, "General"), generalAtLength(value)) << value;
    }
  }
}

TEST(NumberFormat, NoNumberIsShownLongerThanItsLongestText) {
  std::mt19937_64 random(8);
  std::uniform_real_distribution<double> exponent(-10.0, 12.0);
  for (int i = 0; i < 20000; ++i) {
    const double value = std::pow(10.0, exponent(random)) * (i % 2 == 0 ? 1.0 : -1.0);
    const std::string_view longest = longestShown(value, "General");
    const std::string shown = shownNumber(value, "General");
    if (longest.empty()) continue;
    ASSERT_LE(shown.size(), longest.size()) << value;
    ASSERT_EQ(shown.find_first_not_of("-.0123456789"), std::string::npos) << value;
    ASSERT_EQ(shown.starts_with('-'), longest.starts_with('-')) << value;
  }
  EXPECT_EQ(longestShown(0.0, ""), "0000000000.");
  EXPECT_EQ(longestShown(1.0, "0.00"), "");
  EXPECT_EQ(longestShown(1e10, "General"), "");
  EXPECT_EQ(longestShown(NAN, "General"), "");
}

TEST(NumberFormat, GeneralGoesOverToAnExponentBeyondElevenCharacters) {
  EXPECT_EQ(shownNumber(-0.0, "General"), "0");
  EXPECT_EQ(shownNumber(1.5e11, "General"), "1.50000e+11");
  EXPECT_EQ(shownNumber(1e-10, "General"), "1.00000e-10");
}

TEST(NumberFormat, BuiltInNumbersAndCodesLeadToEachOther) {
  EXPECT_EQ(builtInFormat(0), "General");
  EXPECT_EQ(builtInFormat(10), "0.00%");
  EXPECT_EQ(builtInFormat(14), "m/d/yyyy");
  EXPECT_EQ(builtInFormat(5), "General") << "a number that depends on the country has no code here";
  EXPECT_EQ(builtInFormat(-1), "General");
  EXPECT_EQ(builtInNumber("0.00%"), 10);
  EXPECT_EQ(builtInNumber("yyyy"), -1);
  for (const std::int32_t number : {0, 1, 2, 3, 4, 9, 10, 11, 12, 13, 14, 22, 37, 40, 45, 49}) {
    EXPECT_EQ(builtInNumber(builtInFormat(number)), number);
  }
}

TEST(NumberFormat, DateFormatsAreToldByTheirNumber) {
  for (const std::int32_t number : {14, 15, 16, 17, 18, 19, 20, 21, 22, 27, 30, 36, 45, 46, 47, 50, 58}) {
    EXPECT_TRUE(isDateFormat(number, "")) << number;
  }
  for (const std::int32_t number : {0, 1, 2, 9, 10, 11, 12, 23, 37, 48, 49}) {
    EXPECT_FALSE(isDateFormat(number, "d")) << number << " has a meaning that the code cannot change";
  }
}

TEST(NumberFormat, DateFormatsOfTheFilesOwnAreToldByTheirSigns) {
  for (const char* code : {"yyyy\\-mm\\-dd", "d.m.yy", "h:mm", "[h]:mm", "[mm]:ss", "YYYY", "[$-409]mmm yyyy", "[Red]d",
                           "ss.000", "m", "mmmm\\ yyyy;@"}) {
    EXPECT_TRUE(isDateFormat(164, code)) << code;
  }
  for (const char* code : {"0.00", "#,##0", "0\\d", "\"day\"0", "[Red]0", "[$EUR-407]#", "0_d", "0*d", "General",
                           "general\" days\"", "0;d", "@", "\"unclosed d", "[unclosed d"}) {
    EXPECT_FALSE(isDateFormat(164, code)) << code;
  }
}

TEST(NumberFormat, FixedFormatsAreFollowed) {
  EXPECT_EQ(shownNumber(0.12345, "0.00%"), "12.35%");
  EXPECT_EQ(shownNumber(0.6, "0%"), "60%");
  EXPECT_EQ(shownNumber(2.0, "0.00"), "2.00");
  EXPECT_EQ(shownNumber(1234567.891, "#,##0.00"), "1,234,567.89");
  EXPECT_EQ(shownNumber(-1234.0, "#,##0"), "-1,234");
  EXPECT_EQ(shownNumber(-123.0, "#,##0"), "-123");
  EXPECT_EQ(shownNumber(1e300, "0").size(), 301U);
}

TEST(NumberFormat, IsoDatesAreSerialNumbers) {
  EXPECT_EQ(isoDateSerial("1899-12-30", false), 0.0);
  EXPECT_EQ(isoDateSerial("2023-03-15", false), 45000.0);
  EXPECT_EQ(isoDateSerial("2023-03-15", true), 45000.0 - 1462.0);
  EXPECT_EQ(isoDateSerial("2023-03-15T12:00:00", false), 45000.5);
  EXPECT_EQ(isoDateSerial("2023-03-15 18:00", false), 45000.75);
  EXPECT_DOUBLE_EQ(isoDateSerial("2023-03-15T00:00:01.500Z", false), 45000.0 + 1.5 / 86400.0);
  EXPECT_EQ(isoDateSerial("06:00:00", false), 0.25);
}

TEST(NumberFormat, WhatIsNoIsoDateIsNoNumber) {
  for (const char* text : {"", "x", "2023", "2023-13-01", "2023-02-30", "2023-03-15X12:00", "2023-03-15T", "25:00:00",
                           "12:60", "-1:00", "20 3-03-15"}) {
    EXPECT_TRUE(std::isnan(isoDateSerial(text, false))) << text;
  }
}

TEST(NumberFormat, WordsCurrenciesAndSectionsAreShownAroundTheDigits) {
  // A column of lengths in "mm" was fitted to the bare digits, and showed nothing but number signs.
  EXPECT_EQ(shownNumber(100.0, "0.000\" mm\""), "100.000 mm");
  EXPECT_EQ(shownNumber(1234.5, "[$\u20AC-407] #,##0.00"), "\u20AC 1,234.50");
  EXPECT_EQ(shownNumber(1234.5, "_(\"$\"* #,##0.00_);_(\"$\"* (#,##0.00);_(\"$\"* \"-\"??_);_(@_)"), "($1,234.50)");
  EXPECT_EQ(shownNumber(-1234.5, "_(\"$\"* #,##0.00_);_(\"$\"* (#,##0.00);_(\"$\"* \"-\"??_);_(@_)"), "($(1,234.50)");
  EXPECT_EQ(shownNumber(-5.0, "#,##0_);[Red](#,##0)"), "(5)");
  EXPECT_EQ(shownNumber(0.0, "0;-0;\"none\""), "none");
  EXPECT_EQ(shownNumber(-0.125, "0.0\\ %"), "-12.5 %");
  EXPECT_EQ(shownNumber(-2.0, "0.0 \"m\""), "-2.0 m");
}

TEST(NumberFormat, WhatIsNotFollowedIsShownAsGeneralShowsIt) {
  for (const char* code : {"# ?/?", "0.00E+00", "000-0000x", "@", "000 000 q", "\"open", "0;0;0;0;0;q"}) {
    EXPECT_FALSE(shownNumber(2.5, code).empty()) << code;
  }
  EXPECT_EQ(shownNumber(2.5, "# ?/?"), "2.5");
  EXPECT_EQ(shownNumber(2.5, "0.00E+00"), "2.5");
  EXPECT_EQ(shownNumber(2.5, "[Red]General"), "2.5");
}

}  // namespace
}  // namespace mervane::workbook
