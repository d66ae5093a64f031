#include <limits>

#include "mervane/convert.h"

namespace mervane {

namespace {

/// Ties to even, and the range before the cast. The limits are shifted by one half: the lower one is even, so the
/// tie below it still rounds into the type, while the tie above the odd upper one rounds out of it.
template <class Integer>
Integer roundedHalfToEven(double value) {
  constexpr double lowest = static_cast<double>(std::numeric_limits<Integer>::min()) - 0.5;
  constexpr double behindHighest = static_cast<double>(std::numeric_limits<Integer>::max()) + 0.5;
  if (!(value >= lowest && value < behindHighest)) raise(runtime::overflow);  // NB: refuses a not-a-number.
  const auto whole = static_cast<std::int64_t>(value);
  const double fraction = value - static_cast<double>(whole);
  std::int64_t rounded = whole;
  if (fraction > 0.5 || (fraction == 0.5 && whole % 2 != 0)) ++rounded;
  if (fraction < -0.5 || (fraction == -0.5 && whole % 2 != 0)) --rounded;
  return static_cast<Integer>(rounded);
}

}  // namespace

std::int32_t roundToInt32(double value) {
  return roundedHalfToEven<std::int32_t>(value);
}

std::int16_t roundToInt16(double value) {
  return roundedHalfToEven<std::int16_t>(value);
}

}  // namespace mervane
