#include "library/default_services.h"

#include <cstdio>
#include <ctime>

#include "platform/headless/headless_error_window.h"

namespace mervane::library {

namespace {

constexpr double secondsOfDay = 86400.0;
constexpr double serialOfEpoch = 25569.0;  // 1 January 1970

class LocalClock final : public platform::Clock {
 public:
  Date now() override {
    const std::time_t utc = std::time(nullptr);
    // The parts of local time, counted as if they were those of UTC.
    const std::tm* local = std::localtime(&utc);  // NOLINT(concurrency-mt-unsafe): read at once, and for reports only.
    if (local == nullptr) return Date{serialOfEpoch + static_cast<double>(utc) / secondsOfDay};
    const int year = local->tm_year + 1900;
    const int before = year - 1;
    constexpr int yearsBeforeEpoch = 1969;
    const auto leapDays = [](int last) { return last / 4 - last / 100 + last / 400; };
    const int days = (year - 1970) * 365 + leapDays(before) - leapDays(yearsBeforeEpoch) + local->tm_yday;
    const int seconds = local->tm_hour * 3600 + local->tm_min * 60 + local->tm_sec;
    return Date{serialOfEpoch + days + seconds / secondsOfDay};
  }
};

class NoScreen final : public platform::Screen {
 public:
  void pointer(std::int32_t) override {}
  void beep() override {}
};

const char* buttonFor(FailureAnswer answer) {
  switch (answer) {
    case FailureAnswer::retry:
      return "RETRY";
    case FailureAnswer::ignore:
      return "IGNORE";
    case FailureAnswer::abort:
      break;
  }
  return "ABORT";
}

FailureAnswer print(const std::string& report) {
  std::fprintf(stderr, "%s\n", report.c_str());
  return FailureAnswer::abort;
}

void read(platform::HeadlessErrorWindow::View& window) {
  const FailureReader reader = failureReader();  // A copy, as the reader may set another one.
  window.click(buttonFor(reader ? reader(window.report()) : print(window.report())));
}

}  // namespace

std::shared_ptr<const platform::Services> defaultServices() {
  auto services = std::make_shared<platform::Services>();
  services->locale = englishLocale();
  services->clock = std::make_shared<LocalClock>();
  services->screen = std::make_shared<NoScreen>();
  services->createErrorWindow = platform::headlessErrorWindows(read);
  return services;
}

FailureReader& failureReader() noexcept {
  thread_local FailureReader reader;
  return reader;
}

}  // namespace mervane::library
