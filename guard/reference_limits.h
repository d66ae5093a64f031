#pragma once

#include <cstdint>

namespace mervane::guard {

/// The last row and column that a reference may name, 65535 and ZZ.
inline constexpr std::int32_t lastReferenceRow = 65535;
inline constexpr std::int32_t lastReferenceColumn = 702;

}  // namespace mervane::guard
