#pragma once

#include <cstdint>
#include <optional>

namespace mervane::platform {

/// Which family of operating systems this is.
class SystemVersion {
 public:
  static constexpr std::int32_t extendedRecord = 156;
  static constexpr std::int32_t basicRecord = 148;
  static constexpr std::int32_t ntFamily = 2;

  virtual ~SystemVersion() = default;
  /// The platform id, asked for with a version record of that many bytes; empty where the call fails.
  virtual std::optional<std::int32_t> platformId(std::int32_t recordSize) = 0;
};

}  // namespace mervane::platform
