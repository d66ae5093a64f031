#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "mervane/runtime_errors.h"
#include "mervane/variant.h"
#include "spreadsheet/cell_address.h"

/// The arguments of a member, converted as automation converts them. Positions are counted from 0.
namespace mervane::hosts {

using Arguments = std::span<const Variant>;

[[nodiscard]] inline bool isGiven(Arguments arguments, std::size_t position) noexcept {
  return position < arguments.size() && arguments[position].kind() != Variant::Kind::missing;
}

/// The argument; raises argumentNotOptional where it was left out, as all of the following do.
[[nodiscard]] inline const Variant& given(Arguments arguments, std::size_t position) {
  if (!isGiven(arguments, position)) raise(runtime::argumentNotOptional);
  return arguments[position];
}

[[nodiscard]] std::int32_t wholeArgument(Arguments arguments, std::size_t position);
[[nodiscard]] bool truthArgument(Arguments arguments, std::size_t position);
[[nodiscard]] std::string textArgument(Arguments arguments, std::size_t position);
/// A column's number, or its letters.
[[nodiscard]] std::int32_t columnArgument(Arguments arguments, std::size_t position);

/// The cells that a value stands for, which only its host knows: those of a range. Nothing for any other value.
using AreaOf = std::function<std::optional<sheet::SheetArea>(const Variant& value)>;
/// Raises typeMismatch for what stands for no cells.
[[nodiscard]] sheet::SheetArea areaArgument(Arguments arguments, std::size_t position, const AreaOf& areaOf);

/// Raises wrongArgumentCount for more arguments than the member has.
inline void atMost(Arguments arguments, std::size_t count) {
  if (arguments.size() > count) raise(runtime::wrongArgumentCount);
}

}  // namespace mervane::hosts
