#include <cmath>
#include <limits>

#include "mervane/convert.h"

namespace mervane {

namespace {

using Kind = Variant::Kind;

bool isNull(const Variant& value) {
  return value.kind() == Kind::null;
}

bool isShortInteger(Kind kind) {
  return kind == Kind::empty || kind == Kind::boolean || kind == Kind::int16;
}

bool isInteger(Kind kind) {
  return isShortInteger(kind) || kind == Kind::int32;
}

template <class Integer>
bool fits(std::int64_t value) {
  return value >= std::numeric_limits<Integer>::min() && value <= std::numeric_limits<Integer>::max();
}

/// The smallest kind from `narrowest` up that holds the sum.
Variant integerSum(std::int64_t sum, Kind narrowest) {
  if (narrowest == Kind::int16 && fits<std::int16_t>(sum)) return static_cast<std::int16_t>(sum);
  if (fits<std::int32_t>(sum)) return static_cast<std::int32_t>(sum);
  return static_cast<double>(sum);
}

/// Single arithmetic. A double has more than twice the digits, so rounding through it loses nothing.
Variant singleSum(double sum) {
  if (std::fabs(sum) > static_cast<double>(std::numeric_limits<float>::max())) return sum;
  return static_cast<float>(sum);
}

bool addsAsSingle(Kind left, Kind right) {
  const auto narrow = [](Kind kind) { return kind == Kind::single || isShortInteger(kind); };
  return narrow(left) && narrow(right) && (left == Kind::single || right == Kind::single);
}

}  // namespace

Variant add(const Variant& left, const Variant& right, const Locale& locale) {
  if (isNull(left) || isNull(right)) return Null{};
  if (left.isText() && (right.isText() || right.isEmpty())) return *left.getIf<std::string>() + toText(right, locale);
  if (right.isText() && left.isEmpty()) return right;

  const double a = toDouble(left, locale);
  const double b = toDouble(right, locale);
  const Kind l = left.kind();
  const Kind r = right.kind();
  if (l == Kind::date || r == Kind::date) return Date{a + b};
  if (isInteger(l) && isInteger(r)) {
    const bool isShort = isShortInteger(l) && isShortInteger(r);
    return integerSum(static_cast<std::int64_t>(a) + static_cast<std::int64_t>(b), isShort ? Kind::int16 : Kind::int32);
  }
  if (addsAsSingle(l, r)) return singleSum(a + b);
  return a + b;
}

Variant divide(const Variant& left, const Variant& right, const Locale& locale) {
  if (isNull(left) || isNull(right)) return Null{};
  const double dividend = toDouble(left, locale);
  const double divisor = toDouble(right, locale);
  if (divisor == 0.0) raise(dividend == 0.0 ? runtime::overflow : runtime::divisionByZero);
  const double quotient = dividend / divisor;
  if (std::isinf(quotient) && std::isfinite(dividend)) raise(runtime::overflow);
  return quotient;
}

}  // namespace mervane
