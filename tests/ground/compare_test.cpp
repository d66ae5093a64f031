#include <limits>
#include <memory>

#include "mervane/convert.h"
#include "tests/ground/raises.h"

namespace mervane {
namespace {

const Locale& english = englishLocale();
constexpr auto less = std::partial_ordering::less;
constexpr auto equal = std::partial_ordering::equivalent;
constexpr auto greater = std::partial_ordering::greater;
constexpr auto unordered = std::partial_ordering::unordered;

std::partial_ordering mirrored(std::partial_ordering order) {
  return order == less ? greater : order == greater ? less : order;
}

TEST(Compare, ValuesOfAllKindsHaveAnOrder) {
  const struct {
    Variant left;
    Variant right;
    std::partial_ordering expected;
  } cases[] = {
      {1, 2, less},
      {2.0, std::int16_t{2}, equal},
      {0.5F, 0.5, equal},
      {0.1F, 0.1, greater},
      {2147483647, 2147483647.5, less},
      {true, 0, less},  // True is -1.
      {true, -1.0, equal},
      {Date{5}, 5, equal},
      {Date{5}, Date{6}, less},
      // The empty value is 0, False and the empty text.
      {Variant(), 0, equal},
      {Variant(), Variant(), equal},
      {Variant(), false, equal},
      {Variant(), "", equal},
      {Variant(), 1, less},
      {Variant(), "a", less},
      {Variant(), -1, greater},
      // A number is below any text, whatever the text says.
      {5, "5", less},
      {5, "", less},
      {1e300, "a", less},
      {true, "True", less},
      {Date{1}, "0", less},
      // Two texts go by their code units.
      {"a", "a", equal},
      {"a", "b", less},
      {"B", "a", less},
      {"a", "ab", less},
      {"10", "9", less},
      {"", "a", less},
      {"é", "z", greater},
      {"\uFFFD", "😀", greater},  // The second is written with surrogates, U+D83D first.
      {"\uD7FF", "😀", less},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(compare(one.left, one.right, english), one.expected)
        << toText(one.left, english) << "|" << toText(one.right, english);
    EXPECT_EQ(compare(one.right, one.left, english), mirrored(one.expected));
  }
}

TEST(Compare, ANotANumberHasNoOrder) {
  EXPECT_EQ(compare(std::numeric_limits<double>::quiet_NaN(), 1, english), unordered);
  EXPECT_EQ(compare(1.0, std::numeric_limits<double>::quiet_NaN(), english), unordered);
}

TEST(Compare, ErrorsArraysAndObjectsRaiseTypeMismatch) {
  const Variant odd[] = {ErrorValue{2042}, Missing{}, std::shared_ptr<sheet::Object>(), Array<double>({{0, 1}})};
  for (const Variant& value : odd) {
    for (const Variant& other : {Variant(), Variant(1), Variant("a"), value}) {
      expectRaises(runtime::typeMismatch, [&] { (void)compare(value, other, english); });
      expectRaises(runtime::typeMismatch, [&] { (void)compare(other, value, english); });
    }
  }
}

TEST(Compare, NullRaisesInvalidUseOfNull) {
  for (const Variant& other : {Variant(), Variant(1), Variant("a"), Variant(Null{})}) {
    expectRaises(runtime::invalidUseOfNull, [&] { (void)compare(Null{}, other, english); });
    expectRaises(runtime::invalidUseOfNull, [&] { (void)compare(other, Null{}, english); });
  }
}

}  // namespace
}  // namespace mervane
