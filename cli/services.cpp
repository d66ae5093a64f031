#include "cli/services.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <utility>

#include "cli/error_answers.h"
#include "cli/forgetful_key_store.h"
#include "cli/machine.h"
#include "cli/paths.h"
#include "cli/problem.h"
#include "cli/text_display.h"
#include "support/error_handler.h"
#include "support/globals.h"

namespace mervane::cli {
namespace {

/// A program without windows has no pointer to change, and a beep would only disturb.
class SilentScreen final : public platform::Screen {
 public:
  void pointer(std::int32_t) override {}
  void beep() override {}
};

void checkLog(const char* flag, const std::string& path) {
  if (path.empty()) return;
  errno = 0;
  if (std::ofstream(toPath(path), std::ios::app)) return;
  throw Problem(ExitStatus::fileTrouble,
                std::string(flag) + ": " + printable(path) + " cannot be written: " + std::strerror(errno),
                "Name a file in a folder that you may write to.");
}

}  // namespace

void checkLogs(const LogFiles& logs) {
  checkLog("--log", logs.errors);
  checkLog("--trace-calls", logs.calls);
}

void switchOnLogs(const LogFiles& logs) {
  CErrorHandler& handler = globals::errorHandler();
  if (!logs.errors.empty()) {
    handler.ErrorLogFile(logs.errors);
    handler.ErrorHandlerActions(ehaErrorForm + ehaLogFile);
  }
  if (!logs.calls.empty()) {
    handler.TracingLogFile(logs.calls);
    handler.TracingFlags(tfLogFile);
    handler.TracingEnabled(true);
  }
}

std::shared_ptr<platform::Services> rememberingServices(ErrorAnswers& answers) {
  auto services = std::make_shared<platform::Services>(machineServices());
  services->screen = std::make_shared<SilentScreen>();
  services->createErrorWindow = [&answers] { return answers.createWindow(); };
  return services;
}

std::shared_ptr<platform::Services> commandLineServices(ErrorAnswers& answers) {
  auto services = rememberingServices(answers);
  services->locale = englishLocale();
  services->keyStore = std::make_shared<ForgetfulKeyStore>();
  return services;
}

ServicesInUse::ServicesInUse(std::shared_ptr<const platform::Services> services) {
  globals::platform(std::move(services));
}
ServicesInUse::~ServicesInUse() {
  globals::release();
}

}  // namespace mervane::cli
