#pragma once

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

}  // namespace mervane::input
