#include "support/server/composition.h"

#include "engine/create_network_engine.h"
#include "mervane/classifier3.h"
#include "platform/windows/windows_services.h"
#include "support/globals.h"
#include "support/server/foreign_engine.h"
#include "support/server/module.h"

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
  // The component lives longer than what clients hold of it where a host does not break the circle of component and
  // dialog. The library must not go before it; the component keeps its environment to its end.
  environment.createEngine = [lock = std::make_shared<ModuleLock>()] {
    std::shared_ptr<NetworkEngine> registered = createForeignEngine();
    return registered != nullptr ? registered : createNetworkEngine();
  };
  return Classifier3::create(std::move(environment));
}

}  // namespace mervane::server
