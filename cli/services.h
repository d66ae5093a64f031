#pragma once

#include <memory>
#include <string>

#include "platform/services.h"

namespace mervane::cli {

class ErrorAnswers;

/// The files of `--log` and `--trace-calls`; empty for none.
struct LogFiles {
  std::string errors;
  std::string calls;
};

/// Raises a Problem with the status fileTrouble where a log cannot be written to.
void checkLogs(const LogFiles& logs);
/// Has failures and calls logged. Comes behind the making of the component, which switches logs off.
void switchOnLogs(const LogFiles& logs);

/// The machine as the command line program shows it to the component: failure reports go to standard error, nothing
/// beeps, nothing is remembered, and numbers are written in the English way on every machine.
/// @param answers outlive the services.
[[nodiscard]] std::shared_ptr<platform::Services> commandLineServices(ErrorAnswers& answers);
/// The same with the user's own regional settings and with what the options dialog remembers.
[[nodiscard]] std::shared_ptr<platform::Services> rememberingServices(ErrorAnswers& answers);

/// Gives this thread's component those services for as long as the object lives.
class ServicesInUse {
 public:
  explicit ServicesInUse(std::shared_ptr<const platform::Services> services);
  ~ServicesInUse();
  ServicesInUse(const ServicesInUse&) = delete;
  ServicesInUse& operator=(const ServicesInUse&) = delete;
};

}  // namespace mervane::cli
