#include "platform/windows/windows_services.h"

#include "platform/error_window.h"
#include "platform/option_window.h"
#include "platform/windows/error_window.h"
#include "platform/windows/machine.h"
#include "platform/windows/option_window.h"
#include "platform/windows/regional_settings.h"
#include "platform/windows/registry.h"
#include "platform/windows/regular_expressions.h"

namespace mervane::platform {

std::shared_ptr<const Services> makeWindowsServices() {
  auto services = std::make_shared<Services>();
  services->locale = windows::userLocale();
  services->keyStore = std::make_shared<windows::Registry>();
  services->regularExpressions = std::make_shared<windows::RegularExpressions>();
  services->messageBox = std::make_shared<windows::MessageDialog>();
  services->eventLog = std::make_shared<windows::EventLog>();
  services->textFiles = std::make_shared<windows::TextFiles>();
  services->clock = std::make_shared<windows::Clock>();
  services->screen = std::make_shared<windows::Screen>();
  services->mail = std::make_shared<windows::Mail>();
  services->systemVersion = std::make_shared<windows::SystemVersion>();
  services->createOptionWindow = &windows::createOptionWindow;
  services->createErrorWindow = &windows::createErrorWindow;
  return services;
}

}  // namespace mervane::platform
