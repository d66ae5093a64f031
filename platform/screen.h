#pragma once

#include <cstdint>

namespace mervane::platform {

/// The screen pointer and the system beep.
class Screen {
 public:
  static constexpr std::int32_t pointerDefault = 0;
  static constexpr std::int32_t pointerHourglass = 11;

  virtual ~Screen() = default;
  virtual void pointer(std::int32_t shape) = 0;
  virtual void beep() = 0;
};

}  // namespace mervane::platform
