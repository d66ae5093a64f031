#include "spreadsheet/palette.h"

#include <array>
#include <cstddef>

#include "mervane/runtime_errors.h"

namespace mervane::sheet {
namespace {

constexpr std::array<std::uint32_t, paletteSize> defaultPalette = {
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,  //  1 to  8
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,  //  9 to 16
    0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,  // 17 to 24
    0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,  // 25 to 32
    0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,  // 33 to 40
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,  // 41 to 48
    0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333,  // 49 to 56
};

std::int32_t distance(std::uint32_t a, std::uint32_t b) {
  std::int32_t sum = 0;
  for (const int shift : {0, 8, 16}) {
    const auto x = static_cast<std::int32_t>((a >> shift) & 0xFFU);
    const auto y = static_cast<std::int32_t>((b >> shift) & 0xFFU);
    sum += (x - y) * (x - y);
  }
  return sum;
}

}  // namespace

std::uint32_t paletteColor(std::int32_t index) {
  if (index < 1 || index > paletteSize) raise(runtime::subscriptOutOfRange);
  return defaultPalette[static_cast<std::size_t>(index - 1)];
}

std::int32_t nearestPaletteIndex(std::uint32_t rgb) {
  std::int32_t best = 1;
  for (std::int32_t index = 2; index <= paletteSize; ++index) {
    if (distance(paletteColor(index), rgb) < distance(paletteColor(best), rgb)) best = index;
  }
  return best;
}

}  // namespace mervane::sheet
