#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "mervane/convert.h"
#include "mervane/locale.h"
#include "mervane/runtime_errors.h"
#include "mervane/variant.h"

namespace mervane::calc {

using Arguments = std::span<const Variant>;

/// Whether the caller gave the argument at the position, counted from 0.
[[nodiscard]] inline bool isGiven(Arguments arguments, std::size_t position) {
  return position < arguments.size() && arguments[position].kind() != Variant::Kind::missing;
}

/// The argument; raises argumentNotOptional where it was left out.
[[nodiscard]] inline const Variant& given(Arguments arguments, std::size_t position) {
  if (!isGiven(arguments, position)) raise(runtime::argumentNotOptional);
  return arguments[position];
}

[[nodiscard]] inline std::int32_t wholeArgument(Arguments arguments, std::size_t position) {
  const Variant& value = given(arguments, position);
  if (const std::int32_t* exact = value.getIf<std::int32_t>()) return *exact;
  return toInt32(value, englishLocale());
}

[[nodiscard]] inline bool truthArgument(Arguments arguments, std::size_t position) {
  return toBoolean(given(arguments, position), englishLocale());
}

[[nodiscard]] inline std::string textArgument(Arguments arguments, std::size_t position) {
  return toText(given(arguments, position), englishLocale());
}

/// Raises wrongArgumentCount for more arguments than the member has.
inline void atMost(Arguments arguments, std::size_t count) {
  if (arguments.size() > count) raise(runtime::wrongArgumentCount);
}

}  // namespace mervane::calc
