#pragma once

#include <compare>
#include <concepts>
#include <string>
#include <type_traits>

#include "mervane/convert.h"
#include "mervane/variant.h"
#include "support/globals.h"

/// One element of an input array, whatever its type, as a number.
namespace mervane::input {

template <class T>
inline constexpr bool isNumber = std::is_arithmetic_v<T>;

template <class T>
requires isNumber<T>
[[nodiscard]] double value(T element) noexcept {
  return static_cast<double>(element);
}
[[nodiscard]] inline double value(const Variant& element) {
  if (const auto* real = element.getIf<double>()) return *real;
  return toDouble(element, globals::locale());
}
[[nodiscard]] inline double value(const std::string& element) {
  return value(Variant(element));
}

/// The automation comparison of a number with an element.
template <class T>
requires isNumber<T>
[[nodiscard]] std::partial_ordering compare(double number, T element) noexcept {
  return number <=> static_cast<double>(element);
}
[[nodiscard]] inline std::partial_ordering compare(double number, const Variant& element) {
  if (const auto* real = element.getIf<double>()) return number <=> *real;
  return mervane::compare(Variant(number), element, globals::locale());
}
[[nodiscard]] inline std::partial_ordering compare(double number, const std::string& element) {
  return compare(number, Variant(element));
}

}  // namespace mervane::input
