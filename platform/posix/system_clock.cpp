#include "platform/posix/system_clock.h"

#include <chrono>
#include <ctime>

namespace mervane::posix {

Date SystemClock::now() {
  using namespace std::chrono;
  constexpr double secondsOfDay = 86400.0;
  const std::time_t instant = system_clock::to_time_t(system_clock::now());
  std::tm local{};
  localtime_r(&instant, &local);
  const auto day = sys_days{year{local.tm_year + 1900} / month{static_cast<unsigned>(local.tm_mon) + 1} /
                            std::chrono::day{static_cast<unsigned>(local.tm_mday)}};
  const auto days = (day - sys_days{year{1899} / December / 30}).count();
  const int seconds = (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
  return {static_cast<double>(days) + seconds / secondsOfDay};
}

}  // namespace mervane::posix
