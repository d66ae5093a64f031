#include "hosts/workbook/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace mervane::workbook {
namespace {

std::string printed(double value) {
  char text[longestNumberText];
  return {text, printNumber(text, value)};
}

double readBack(const std::string& text) {
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  EXPECT_TRUE(error == std::errc{} && end == text.data() + text.size()) << text;
  return value;
}

/// Length of the shortest text without an exponent.
std::size_t shortestLength(double value) {
  char text[512];
  return static_cast<std::size_t>(std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr - text);
}

TEST(NumberText, PrintsDecimalsWithoutZerosAtTheEnd) {
  EXPECT_EQ(printed(0.0), "0");
  EXPECT_EQ(printed(7.0), "7");
  EXPECT_EQ(printed(-12.5), "-12.5");
  EXPECT_EQ(printed(0.0001), "0.0001");
  EXPECT_EQ(printed(0.05), "0.05");
  EXPECT_EQ(printed(1.001), "1.001");
  EXPECT_EQ(printed(100000.0), "100000");
  EXPECT_EQ(printed(99999999999.9999), "99999999999.9999");
}

TEST(NumberText, PrintsOtherNumbersByTheirShortestText) {
  EXPECT_EQ(printed(1.0 / 3.0), "0.3333333333333333");
  EXPECT_EQ(printed(1e300), "1e+300");
  EXPECT_EQ(printed(5e-324), "5e-324");
  EXPECT_EQ(printed(-0.0), "-0");
  EXPECT_EQ(printed(std::numeric_limits<double>::lowest()), "-1.7976931348623157e+308");
}

TEST(NumberText, EveryTextReadsBackAsItsNumber) {
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> exponent(-6.0, 13.0);
  for (int i = 0; i < 200000; ++i) {
    double value = std::pow(10.0, exponent(random)) * (i % 2 == 0 ? 1.0 : -1.0);
    const double scale = std::pow(10.0, i % 7);
    if (i % 3 != 0) value = std::round(value * scale) / scale;
    if (i % 5 == 0) value = std::nextafter(value, 0.0);
    const std::string text = printed(value);
    ASSERT_EQ(std::bit_cast<std::uint64_t>(readBack(text)), std::bit_cast<std::uint64_t>(value)) << text;
    ASSERT_LE(text.size(), shortestLength(value)) << text;
  }
}

}  // namespace
}  // namespace mervane::workbook
