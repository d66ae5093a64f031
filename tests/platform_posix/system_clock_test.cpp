#include "platform/posix/system_clock.h"

#include <gtest/gtest.h>
#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): setenv is POSIX.
#include <time.h>    // NOLINT(modernize-deprecated-headers): tzset is POSIX.

#include <cmath>

#include "tests/platform_posix/child_process.h"

namespace mervane::tests {

TEST(SystemClock, TheSerialNumberIsThatOfTheLocalTime) {
  const int answer = ChildProcess([] {
                       constexpr double unixEpoch = 25569.0;
                       constexpr double secondsOfDay = 86400.0;
                       for (const int hours : {0, 5, -7}) {
                         // POSIX counts hours west of Greenwich.
                         setenv("TZ", ("XXX" + std::to_string(-hours)).c_str(), 1);
                         tzset();
                         const double expected =
                             unixEpoch + (static_cast<double>(time(nullptr)) + hours * 3600.0) / secondsOfDay;
                         if (std::abs(posix::SystemClock().now().serial - expected) > 2.0 / secondsOfDay) return 1;
                       }
                       return 0;
                     }).wait();
  EXPECT_EQ(answer, 0);
}

}  // namespace mervane::tests
