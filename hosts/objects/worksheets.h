#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "hosts/objects/arguments.h"
#include "mervane/variant.h"

namespace mervane::hosts {

/// The sheets of a book as its host knows them, counted from 0.
struct SheetList {
  std::function<std::int32_t()> count;
  std::function<std::optional<std::int32_t>(const std::string&)> named;
  std::function<Variant(std::int32_t)> object;
};

/// The collection Worksheets; where arguments are given, its item by position, counted from 1, or by name. An item that
/// there is none of raises subscriptOutOfRange.
[[nodiscard]] Variant worksheetsOf(SheetList sheets, Arguments arguments);

}  // namespace mervane::hosts
