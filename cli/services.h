#pragma once

#include "platform/services.h"

namespace mervane::cli {

class ErrorAnswers;

/// The machine as the command line program shows it to the component: failure reports go to standard error, nothing
/// beeps, no setting is remembered.
/// @param answers outlive the services.
[[nodiscard]] std::shared_ptr<const platform::Services> commandLineServices(ErrorAnswers& answers);

/// Gives this thread's component those services for as long as the object lives.
class ServicesInUse {
 public:
  explicit ServicesInUse(ErrorAnswers& answers);
  ~ServicesInUse();
  ServicesInUse(const ServicesInUse&) = delete;
  ServicesInUse& operator=(const ServicesInUse&) = delete;
};

}  // namespace mervane::cli
