#include "mervane/convert.h"

#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>

#include "tests/ground/raises.h"

namespace mervane {
namespace {

const Locale& english = englishLocale();
constexpr double infinity = std::numeric_limits<double>::infinity();

const Variant emptyObject{std::shared_ptr<sheet::Object>()};
const Variant someArray{Array<double>({{1, 2}})};

TEST(ToDouble, EachKindHasItsNumber) {
  EXPECT_EQ(toDouble(Variant(), english), 0.0);
  EXPECT_EQ(toDouble(true, english), -1.0);
  EXPECT_EQ(toDouble(false, english), 0.0);
  EXPECT_EQ(toDouble(std::int16_t{-7}, english), -7.0);
  EXPECT_EQ(toDouble(2147483647, english), 2147483647.0);
  EXPECT_EQ(toDouble(0.1F, english), static_cast<double>(0.1F));
  EXPECT_EQ(toDouble(0.1, english), 0.1);
  EXPECT_EQ(toDouble(Date{38425.5}, english), 38425.5);
  EXPECT_EQ(toDouble("12", english), 12.0);
  EXPECT_EQ(toDouble("0,5", localeNamed("de-DE")), 0.5);
}

TEST(ToDouble, WhatIsNoNumberRaisesTypeMismatch) {
  for (const Variant& value : {Variant("abc"), Variant(""), Variant("True"), Variant(ErrorValue{2042}),
                               Variant(Missing{}), emptyObject, someArray})
    expectRaises(runtime::typeMismatch, [&] { (void)toDouble(value, english); });
  expectRaises(runtime::invalidUseOfNull, [] { (void)toDouble(Null{}, english); });
  expectRaises(runtime::overflow, [] { (void)toDouble("1e400", english); });
}

TEST(ToSingle, RoundsToTheNearestSingle) {
  EXPECT_EQ(toSingle(0.1, english), 0.1F);
  EXPECT_NE(static_cast<double>(toSingle(0.1, english)), 0.1);
  EXPECT_EQ(toSingle("12", english), 12.0F);
  EXPECT_EQ(toSingle(Variant(), english), 0.0F);
  EXPECT_EQ(toSingle(true, english), -1.0F);
  EXPECT_EQ(toSingle(16777217, english), 16777216.0F);
  EXPECT_EQ(toSingle(1e-60, english), 0.0F);
  EXPECT_EQ(toSingle(static_cast<double>(FLT_MAX), english), FLT_MAX);
  EXPECT_TRUE(std::isnan(toSingle(std::numeric_limits<double>::quiet_NaN(), english)));
}

TEST(ToSingle, BeyondTheSingleRangeRaisesOverflow) {
  for (const double value : {1e300, -1e300, 3.5e38, std::nextafter(static_cast<double>(FLT_MAX), infinity), infinity})
    expectRaises(runtime::overflow, [&] { (void)toSingle(value, english); });
}

TEST(ToInt32, TextsAndNumbersAreRounded) {
  EXPECT_EQ(toInt32("2.5", english), 2);
  EXPECT_EQ(toInt32("3.5", english), 4);
  EXPECT_EQ(toInt32("1.6", english), 2);
  EXPECT_EQ(toInt32("1.4", english), 1);
  EXPECT_EQ(toInt32("1E2", english), 100);
  EXPECT_EQ(toInt32(3.7F, english), 4);
  EXPECT_EQ(toInt32(true, english), -1);
  EXPECT_EQ(toInt32(Variant(), english), 0);
  EXPECT_EQ(toInt32(Date{38425.5}, english), 38426);
  EXPECT_EQ(toInt32("2147483647", english), 2147483647);
  expectRaises(runtime::overflow, [] { (void)toInt32("2147483648", english); });
  expectRaises(runtime::overflow, [] { (void)toInt32(1e300, english); });
  expectRaises(runtime::typeMismatch, [] { (void)toInt32("abc", english); });
}

TEST(ToInt16, TheRangeIsNarrower) {
  EXPECT_EQ(toInt16("1", english), 1);
  EXPECT_EQ(toInt16(-32768, english), -32768);
  expectRaises(runtime::overflow, [] { (void)toInt16(32768, english); });
  expectRaises(runtime::overflow, [] { (void)toInt16("65536", english); });
}

TEST(ToBoolean, AnyNumberButZeroIsTrue) {
  EXPECT_FALSE(toBoolean(Variant(), english));
  EXPECT_TRUE(toBoolean(true, english));
  EXPECT_TRUE(toBoolean(std::int16_t{1}, english));
  EXPECT_TRUE(toBoolean(0.3, english));
  EXPECT_FALSE(toBoolean(-0.0, english));
  EXPECT_TRUE(toBoolean("-1", english));
  EXPECT_FALSE(toBoolean("0", english));
  EXPECT_TRUE(toBoolean(Date{1}, english));
}

TEST(ToBoolean, TakesTheWordsOfTheLocaleAndOfEnglish) {
  EXPECT_TRUE(toBoolean("true", english));
  EXPECT_FALSE(toBoolean("FALSE", english));
  EXPECT_TRUE(toBoolean("wahr", localeNamed("de-DE")));
  EXPECT_TRUE(toBoolean("True", localeNamed("de-DE")));
  EXPECT_FALSE(toBoolean("ЛОЖЬ", localeNamed("ru-RU")));
  EXPECT_TRUE(toBoolean("истина", localeNamed("ru-RU")));
  for (const char* text : {"", "yes", "Wahr", "Tru"})
    expectRaises(runtime::typeMismatch, [&] { (void)toBoolean(text, english); });
  expectRaises(runtime::invalidUseOfNull, [] { (void)toBoolean(Null{}, english); });
}

TEST(ToText, EachKindHasItsText) {
  EXPECT_EQ(toText(Variant(), english), "");
  EXPECT_EQ(toText(true, english), "True");
  EXPECT_EQ(toText(false, localeNamed("de-DE")), "Falsch");
  EXPECT_EQ(toText(std::int16_t{-5}, english), "-5");
  EXPECT_EQ(toText(-2147483647 - 1, english), "-2147483648");
  EXPECT_EQ(toText(0.1F, english), "0.1");
  EXPECT_EQ(toText(0.5, localeNamed("fr-FR")), "0,5");
  EXPECT_EQ(toText(1e20, english), "1E+20");
  EXPECT_EQ(toText(Date{38425}, english), "3/14/2005");
  EXPECT_EQ(toText(" as it is ", english), " as it is ");
}

TEST(ToText, WhatHasNoTextRaises) {
  for (const Variant& value : {Variant(ErrorValue{2042}), Variant(Missing{}), emptyObject, someArray})
    expectRaises(runtime::typeMismatch, [&] { (void)toText(value, english); });
  expectRaises(runtime::invalidUseOfNull, [] { (void)toText(Null{}, english); });
}

TEST(IsNumeric, NumbersBooleansEmptyAndNumberTextsPass) {
  for (const Variant& value : {Variant(), Variant(true), Variant(std::int16_t{1}), Variant(1), Variant(0.1F),
                               Variant(1e300), Variant("12"), Variant(" 1E5 "), Variant("(5)")})
    EXPECT_TRUE(isNumeric(value, english)) << typeName(value);
}

TEST(IsNumeric, DatesErrorsAndOtherTextsDoNot) {
  for (const Variant& value :
       {Variant(Date{1}), Variant(ErrorValue{2007}), Variant(Null{}), Variant(Missing{}), someArray, emptyObject,
        Variant(""), Variant("abc"), Variant("1/2/2005"), Variant("True"), Variant("1e400")})
    EXPECT_FALSE(isNumeric(value, english)) << typeName(value);
  EXPECT_FALSE(isNumeric("1,5", localeNamed("de-CH")));
}

TEST(TypeName, EachKindHasItsAutomationName) {
  const std::pair<Variant, const char*> cases[] = {
      {Variant(), "Empty"},
      {Null{}, "Null"},
      {true, "Boolean"},
      {std::int16_t{1}, "Integer"},
      {1, "Long"},
      {1.0F, "Single"},
      {1.0, "Double"},
      {Date{1}, "Date"},
      {"", "String"},
      {ErrorValue{2042}, "Error"},
      {Missing{}, "Error"},
      {emptyObject, "Nothing"},
      {Array<double>({{0, 0}}), "Double()"},
      {Array<float>({{0, 0}}), "Single()"},
      {Array<std::int32_t>({{0, 0}}), "Long()"},
      {Array<std::int16_t>({{0, 0}}), "Integer()"},
      {Array<std::uint8_t>({{0, 0}}), "Byte()"},
      {Array<std::string>({{0, 0}}), "String()"},
      {Array<Variant>({{0, 0}}), "Variant()"},
  };
  for (const auto& [value, expected] : cases) EXPECT_EQ(typeName(value), expected);
}

}  // namespace
}  // namespace mervane
