#include "support/server/composition.h"

#include "engine/create_network_engine.h"
#include "mervane/classifier3.h"
#include "platform/windows/windows_services.h"
#include "support/globals.h"
#include "support/server/foreign_engine.h"

namespace mervane::server {
namespace {

void furnishThread() {
  static thread_local bool furnished = false;
  if (furnished) return;
  globals::platform(platform::makeWindowsServices());
  furnished = true;
}

}  // namespace

std::shared_ptr<Classifier3> composeClassifier() {
  furnishThread();
  Classifier3::Environment environment;
  environment.createEngine = [] {
    std::shared_ptr<NetworkEngine> registered = createForeignEngine();
    return registered != nullptr ? registered : createNetworkEngine();
  };
  return Classifier3::create(std::move(environment));
}

}  // namespace mervane::server
