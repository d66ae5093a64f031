#pragma once

#include <cstdint>

namespace mervane::sheet {

/// Number of colours in the application's default palette. Indexes count from 1.
inline constexpr std::int32_t paletteSize = 56;

/// The colour at an index of the application's default palette, as 0xRRGGBB.
/// @param index 1 to 56, otherwise raises subscriptOutOfRange.
[[nodiscard]] std::uint32_t paletteColor(std::int32_t index);
/// The index of the colour that comes nearest to 0xRRGGBB; of equal ones the first.
[[nodiscard]] std::int32_t nearestPaletteIndex(std::uint32_t rgb);

}  // namespace mervane::sheet
