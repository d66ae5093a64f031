#include "cli/services.h"

#include <chrono>
#include <ctime>

#include "cli/error_answers.h"
#include "support/globals.h"

namespace mervane::cli {
namespace {

class LocalClock final : public platform::Clock {
 public:
  Date now() override {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    const std::time_t seconds = std::chrono::duration_cast<std::chrono::seconds>(sinceEpoch).count();
    const std::tm* local = std::localtime(&seconds);  // NOLINT(concurrency-mt-unsafe): the program has one thread.
    if (local == nullptr) return {};
    const auto day = std::chrono::sys_days(std::chrono::year(local->tm_year + 1900) /
                                           std::chrono::month(static_cast<unsigned>(local->tm_mon + 1)) /
                                           std::chrono::day(static_cast<unsigned>(local->tm_mday)));
    constexpr auto dayZero = std::chrono::sys_days(std::chrono::year(1899) / 12 / 30);
    constexpr double secondsOfDay = 86400.0;
    const int ofDay = (local->tm_hour * 60 + local->tm_min) * 60 + local->tm_sec;
    return {static_cast<double>((day - dayZero).count()) + ofDay / secondsOfDay};
  }
};

/// A program without windows has no pointer to change, and a beep would only disturb.
class SilentScreen final : public platform::Screen {
 public:
  void pointer(std::int32_t) override {}
  void beep() override {}
};

}  // namespace

std::shared_ptr<const platform::Services> commandLineServices(ErrorAnswers& answers) {
  auto services = std::make_shared<platform::Services>();
  services->locale = englishLocale();
  services->clock = std::make_shared<LocalClock>();
  services->screen = std::make_shared<SilentScreen>();
  services->createErrorWindow = [&answers] { return answers.createWindow(); };
  return services;
}

ServicesInUse::ServicesInUse(ErrorAnswers& answers) {
  globals::platform(commandLineServices(answers));
}
ServicesInUse::~ServicesInUse() {
  globals::release();
}

}  // namespace mervane::cli
