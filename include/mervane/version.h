#pragma once

#include <cstdint>

/// The library's version. Every file that tells it takes it from here; the build checks that the project agrees.
namespace mervane::version {

inline constexpr std::int32_t major = 3;
inline constexpr std::int32_t minor = 0;
inline constexpr std::int32_t revision = 57;

/// The number of the library's file, four places wide.
inline constexpr const char* fileVersion = "3.0.0.57";
/// The text form in the file's version record.
inline constexpr const char* text = "3.00.0057";

}  // namespace mervane::version
