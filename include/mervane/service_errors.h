#pragma once

#include <cstdint>

/// Error numbers of the support services, on the error base 0x80040000: what CErrorHandler and CAppSettings raise, and
/// eErr_ComponentFailure, which stands for any failure that a procedure wraps.
namespace mervane {

inline constexpr std::int32_t errorBase = -2147221504;

inline constexpr std::int32_t eErr_ComponentFailure = errorBase + 100;
inline constexpr std::int32_t eErr_InvalidAppName = errorBase + 17021;
inline constexpr std::int32_t eErr_InvalidCompanyName = errorBase + 17022;
inline constexpr std::int32_t eErr_InvalidMainBranch = errorBase + 17023;
inline constexpr std::int32_t eErr_InvalidRootKey = errorBase + 17024;
inline constexpr std::int32_t eErr_SaveSetting = errorBase + 17025;
inline constexpr std::int32_t eErr_DeleteSetting = errorBase + 17026;
inline constexpr std::int32_t eErr_GetAllKeys = errorBase + 17027;
inline constexpr std::int32_t eErr_SettingsFailure = errorBase + 17028;

inline constexpr std::int32_t eErr_InvalidFileName = errorBase + 17401;
inline constexpr std::int32_t eErr_InvalidActions = errorBase + 17402;
inline constexpr std::int32_t eErr_InvalidTracingFlags = errorBase + 17403;
inline constexpr std::int32_t eErr_ErrorHandlerFailure = errorBase + 17404;

}  // namespace mervane
