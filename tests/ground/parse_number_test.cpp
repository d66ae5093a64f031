#include <cfloat>
#include <cmath>
#include <string>

#include "mervane/convert.h"
#include "tests/ground/raises.h"

namespace mervane {
namespace {

struct Reading {
  const char* locale;
  const char* text;
  double expected;
};

TEST(ParseNumber, ReadsWhatTheLocaleWrites) {
  const Reading cases[] = {
      {"en-US", "12", 12},
      {"en-US", "2147483648", 2147483648.0},
      {"en-US", "0.1", 0.1},
      {"en-US", ".5", 0.5},
      {"en-US", "5.", 5},
      {"en-US", "007", 7},
      {"en-US", "1,234,567.25", 1234567.25},
      {"en-US", "1,2", 12},  // Where a group separator stands is not looked at.
      {"en-US", "$5", 5},
      {"en-US", "5 $", 5},
      {"en-GB", "£1,000.50", 1000.5},
      {"de-DE", "0,1", 0.1},
      {"de-DE", "1.234,5", 1234.5},
      {"de-DE", "1.5", 15},
      {"de-DE", "12 €", 12},
      {"de-CH", "1’234.5", 1234.5},
      {"de-CH", "1'234.5", 1234.5},
      {"de-CH", "CHF 12.50", 12.5},
      {"fr-FR", "1\u202F234,5", 1234.5},
      {"fr-FR", "1\u00A0234,5", 1234.5},
      {"fr-FR", "1 234 567,5", 1234567.5},
      {"sv-SE", "1\u00A0234,5", 1234.5},
      {"sv-SE", "12 kr", 12},
      {"pt-BR", "R$ 1.234,56", 1234.56},
      {"ru-RU", "1\u00A0234,5 ₽", 1234.5},
      {"hi-IN", "₹12,34,567.5", 1234567.5},
      {"ja-JP", "¥1,000", 1000},
  };
  for (const Reading& one : cases) {
    const auto number = parseNumber(one.text, localeNamed(one.locale));
    ASSERT_TRUE(number.has_value()) << one.locale << " " << one.text;
    EXPECT_EQ(*number, one.expected) << one.locale << " " << one.text;
  }
}

TEST(ParseNumber, TakesBlanksSignsParenthesesAndExponents) {
  const struct {
    const char* text;
    double expected;
  } cases[] = {
      {"  12  ", 12},
      {"\t12\r\n", 12},
      {"\u00A012\u00A0", 12},
      {"+5", 5},
      {"-5", -5},
      {"- 5", -5},
      {"5-", -5},
      {"5 -", -5},
      {"5+", 5},
      {"(5)", -5},
      {"( 5 )", -5},
      {"($5)", -5},
      {"-$5", -5},
      {"$-5", -5},
      {"1E-2", 0.01},
      {"1e+2", 100},
      {"1d3", 1000},
      {"1D-3", 0.001},
      {"2.5E3", 2500},
      {"1E2-", -100},
      {"-0", 0},
      {"0E999999999", 0},
      {"&HFF", 255},
      {"&hff", 255},
      {"&O17", 15},
      {"&17", 15},
      {"-&H10", -16},
      {" &H10 ", 16},
      {"&HFFFF", 65535},
      {"&H7FFFFFFF", 2147483647},
      {"&HFFFFFFFF", -1},
      {"&H80000000", -2147483648.0},
  };
  for (const auto& one : cases) {
    const auto number = parseNumber(one.text, englishLocale());
    ASSERT_TRUE(number.has_value()) << one.text;
    EXPECT_EQ(*number, one.expected) << one.text;
  }
}

TEST(ParseNumber, AnythingElseIsNoNumber) {
  for (const char* text :
       {"",    " ",    "abc",   "12abc", "1 2", "1e",   "1e+",      "e5",   "1e5.5", "1e5e5", ".",    "-",
        "+",   "$",    "--5",   "+-5",   "-5-", "5--",  "(5",       "5)",   "()",    "(-5)",  "(5-)", "((5))",
        "$5$", "1..2", "1.2.3", ",5",    "5,",  "1,,2", "1.5,5",    "&",    "&H",    "&HG",   "&O8",  "&H1.5",
        "nan", "inf",  "1#INF", "0x10",  "5%",  "1/2",  "1/2/2005", "True", "€5",    "٣",     "１"})
    EXPECT_FALSE(parseNumber(text, englishLocale()).has_value()) << text;
  EXPECT_FALSE(parseNumber(std::string_view("5\0", 2), englishLocale()).has_value());
  EXPECT_FALSE(parseNumber("1,5,5", localeNamed("de-DE")).has_value());
}

TEST(ParseNumber, AGroupSeparatorCountsOnlyBetweenDigits) {
  // A blank that parts groups is still an ordinary blank at either end.
  EXPECT_EQ(parseNumber(" 1 000 ", localeNamed("fr-FR")), 1000.0);
  EXPECT_FALSE(parseNumber("1  000", localeNamed("fr-FR")).has_value());
  EXPECT_FALSE(parseNumber("1,5 000", localeNamed("fr-FR")).has_value());
}

TEST(ParseNumber, ReadingIsCorrectlyRounded) {
  const struct {
    const char* text;
    double expected;
  } cases[] = {
      {"9007199254740993", 9007199254740992.0},  // A tie, to even.
      {"9007199254740993.00000000000000000000000000000000000000001", 9007199254740994.0},
      {"2.2250738585072011e-308", 0x0.fffffffffffffp-1022},  // Has hung other readers.
      {"4.9406564584124654e-324", 0x1p-1074},
      {"3e-324", 0x1p-1074},
      {"2e-324", 0.0},
      {"1e-400", 0.0},
      {"1e-99999999999999999999", 0.0},
      {"1.7976931348623157e308", DBL_MAX},
      {"1.79769313486231580e308", DBL_MAX},
  };
  for (const auto& one : cases) EXPECT_EQ(parseNumber(one.text, englishLocale()), one.expected) << one.text;
}

TEST(ParseNumber, ManyDigitsAreAllCounted) {
  const std::string zeros(5000, '0');
  EXPECT_EQ(parseNumber("1" + zeros + "E-5000", englishLocale()), 1.0);
  EXPECT_EQ(parseNumber("0." + zeros + "1E5001", englishLocale()), 1.0);
  EXPECT_EQ(parseNumber("1." + zeros + "1", englishLocale()), 1.0);
}

TEST(ParseNumber, BeyondTheDoubleRangeRaisesOverflow) {
  for (const char* text : {"1e309", "-1e309", "1.8e308", "1.7976931348623159e308", "1e99999999999999999999",
                           "&H100000000", "&O40000000000"})
    expectRaises(runtime::overflow, [&] { (void)parseNumber(text, englishLocale()); });
}

}  // namespace
}  // namespace mervane
