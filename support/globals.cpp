#include "support/globals.h"

#include <utility>

#include "mervane/runtime_errors.h"
#include "support/frm_error_message.h"

namespace mervane::globals {

namespace {
/// Destroyed from the last member to the first, so the services outlive those who use them.
struct ModuleData {
  std::shared_ptr<const platform::Services> services;
  std::unique_ptr<frmErrorMessage> errorMessageForm;
  std::unique_ptr<CErrorHandler> errorHandler;
};

ModuleData& moduleData() {
  thread_local ModuleData data;
  return data;
}
}  // namespace

void platform(std::shared_ptr<const platform::Services> services) {
  moduleData().services = std::move(services);
}

const platform::Services& platform() {
  const auto& services = moduleData().services;
  if (!services) raise(runtime::objectNotSet);
  return *services;
}

const Locale& locale() noexcept {
  const auto& services = moduleData().services;
  return services ? services->locale : englishLocale();
}

CErrorHandler& errorHandler() {
  auto& handler = moduleData().errorHandler;
  if (!handler) handler = std::make_unique<CErrorHandler>();
  return *handler;
}

frmErrorMessage& errorMessageForm() {
  auto& form = moduleData().errorMessageForm;
  if (!form) form = std::make_unique<frmErrorMessage>();
  return *form;
}

void release() noexcept {
  ModuleData& data = moduleData();
  data.errorHandler.reset();
  data.errorMessageForm.reset();
  data.services.reset();
}

}  // namespace mervane::globals
