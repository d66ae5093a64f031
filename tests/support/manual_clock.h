#pragma once

#include "platform/clock.h"

namespace mervane::tests {

/// A clock that stands still until a test moves it; at first on 14 March 2005, 3:07:09 PM.
class ManualClock : public platform::Clock {
 public:
  static constexpr double secondsOfDay = 86400.0;

  Date now() override { return now_; }
  void set(Date date) noexcept { now_ = date; }
  void advanceSeconds(double seconds) noexcept { now_.serial += seconds / secondsOfDay; }

 private:
  Date now_{38425.0 + (15 * 3600 + 7 * 60 + 9) / secondsOfDay};
};

}  // namespace mervane::tests
