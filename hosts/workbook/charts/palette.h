#pragma once

#include <cstdint>

namespace mervane::workbook {

/// Number of colours in the application's default palette. Indexes count from 1.
inline constexpr std::int32_t paletteSize = 56;

/// The colour at an index of the application's default palette, as 0xRRGGBB.
/// @param index 1 to 56, otherwise raises subscriptOutOfRange.
[[nodiscard]] std::uint32_t paletteColor(std::int32_t index);

}  // namespace mervane::workbook
