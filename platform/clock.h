#pragma once

#include "mervane/variant.h"

namespace mervane::platform {

class Clock {
 public:
  virtual ~Clock() = default;
  /// Local date and time.
  virtual Date now() = 0;
};

}  // namespace mervane::platform
