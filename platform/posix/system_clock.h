#pragma once

#include "platform/clock.h"

namespace mervane::posix {

/// The machine's clock in the time zone of the process.
class SystemClock final : public platform::Clock {
 public:
  Date now() override;
};

}  // namespace mervane::posix
