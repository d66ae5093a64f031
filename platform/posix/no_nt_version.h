#pragma once

#include <cstdint>
#include <optional>

#include "platform/system_version.h"

namespace mervane::posix {

/// A machine outside the NT family.
class NoNtVersion final : public platform::SystemVersion {
 public:
  std::optional<std::int32_t> platformId(std::int32_t /*recordSize*/) override { return std::nullopt; }
};

}  // namespace mervane::posix
