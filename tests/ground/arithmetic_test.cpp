#include <cfloat>
#include <cmath>

#include "mervane/convert.h"
#include "tests/ground/raises.h"

namespace mervane {
namespace {

const Locale& english = englishLocale();

TEST(Add, TheResultHasTheKindOfTheWiderSide) {
  const struct {
    Variant left;
    Variant right;
    Variant expected;
  } cases[] = {
      {std::int16_t{0}, 2.5, 2.5},
      {std::int16_t{1}, std::int16_t{2}, std::int16_t{3}},
      {std::int16_t{1}, 2, 3},
      {true, true, std::int16_t{-2}},
      {Variant(), Variant(), std::int16_t{0}},
      {Variant(), 5, 5},
      {Variant(), 0.5, 0.5},
      {0.5F, 0.25F, 0.75F},
      {0.5F, std::int16_t{1}, 1.5F},
      {0.5F, 1, 1.5},
      {0.5F, 0.25, 0.75},
      {Date{38425}, 0.5, Date{38425.5}},
      {1, Date{38425}, Date{38426}},
      {Date{38425}, "1", Date{38426}},
  };
  for (const auto& one : cases) EXPECT_EQ(add(one.left, one.right, english), one.expected) << typeName(one.expected);
}

TEST(Add, IntegersWidenOnOverflow) {
  EXPECT_EQ(add(std::int16_t{32767}, std::int16_t{1}, english), Variant(32768));
  EXPECT_EQ(add(std::int16_t{-32768}, true, english), Variant(-32769));
  EXPECT_EQ(add(2147483647, 1, english), Variant(2147483648.0));
  EXPECT_EQ(add(-2147483647 - 1, std::int16_t{-1}, english), Variant(-2147483649.0));
  EXPECT_EQ(add(FLT_MAX, FLT_MAX, english), Variant(2.0 * static_cast<double>(FLT_MAX)));
}

TEST(Add, TwoTextsAreJoinedAndATextBesideANumberIsConverted) {
  EXPECT_EQ(add("1", "2", english), Variant("12"));
  EXPECT_EQ(add("a", Variant(), english), Variant("a"));
  EXPECT_EQ(add(Variant(), "a", english), Variant("a"));
  EXPECT_EQ(add(std::int16_t{1}, "2", english), Variant(3.0));
  EXPECT_EQ(add("0,5", 1, localeNamed("de-DE")), Variant(1.5));
  expectRaises(runtime::typeMismatch, [] { (void)add(1, "abc", english); });
  expectRaises(runtime::typeMismatch, [] { (void)add("", 1, english); });
}

TEST(Add, WhatIsNoNumberRaisesAndNullStaysNull) {
  for (const Variant& odd : {Variant(ErrorValue{2042}), Variant(Missing{}), Variant(Array<double>({{0, 1}}))}) {
    expectRaises(runtime::typeMismatch, [&] { (void)add(odd, 1, english); });
    expectRaises(runtime::typeMismatch, [&] { (void)add("a", odd, english); });
    expectRaises(runtime::typeMismatch, [&] { (void)divide(1, odd, english); });
  }
  EXPECT_EQ(add(Null{}, 1, english), Variant(Null{}));
  EXPECT_EQ(add("a", Null{}, english), Variant(Null{}));
  EXPECT_EQ(divide(1, Null{}, english), Variant(Null{}));
}

TEST(Divide, TheQuotientIsADouble) {
  EXPECT_EQ(divide(7, 2, english), Variant(3.5));
  EXPECT_EQ(divide(std::int16_t{6}, 3.0, english), Variant(2.0));
  EXPECT_EQ(divide("1", "4", english), Variant(0.25));
  EXPECT_EQ(divide(Variant(), 5, english), Variant(0.0));
  EXPECT_EQ(divide(1, true, english), Variant(-1.0));
}

TEST(Divide, AZeroDivisorAndATooLargeQuotientRaise) {
  expectRaises(runtime::divisionByZero, [] { (void)divide(1, 0, english); });
  expectRaises(runtime::divisionByZero, [] { (void)divide(-1.5, Variant(), english); });
  expectRaises(runtime::overflow, [] { (void)divide(0, 0.0, english); });
  expectRaises(runtime::overflow, [] { (void)divide(1e300, 1e-300, english); });
  expectRaises(runtime::typeMismatch, [] { (void)divide("abc", 1, english); });
}

}  // namespace
}  // namespace mervane
