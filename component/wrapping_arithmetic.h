#pragma once

#include <cstdint>

/// 32-bit signed arithmetic that wraps silently, as the system's integer sums do.
namespace mervane::wrapping32 {

[[nodiscard]] constexpr std::int32_t add(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
[[nodiscard]] constexpr std::int32_t subtract(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
[[nodiscard]] constexpr std::int32_t multiply(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

}  // namespace mervane::wrapping32
