#include "mervane/library.h"

#include <utility>

#include "engine/create_network_engine.h"
#include "library/default_services.h"
#include "mervane/failure.h"
#include "support/globals.h"

namespace mervane {

namespace {

bool hasServices() {
  try {
    (void)globals::platform();
    return true;
  } catch (const Failure&) {
    return false;
  }
}

/// A pointer of its own to the same object, whose end breaks the circle between the classifier and its dialog.
std::shared_ptr<Classifier3> unloadingAtTheEnd(std::shared_ptr<Classifier3> classifier) {
  Classifier3* const object = classifier.get();
  return {object, [held = std::move(classifier)](Classifier3*) mutable {
            held->UnloadfrmMain();
            held.reset();
          }};
}

}  // namespace

std::shared_ptr<Classifier3> createClassifier() {
  return createClassifier(createNetworkEngine);
}

std::shared_ptr<Classifier3> createClassifier(EngineFactory createEngine) {
  if (!hasServices()) globals::platform(library::defaultServices());
  return unloadingAtTheEnd(Classifier3::create({.createEngine = std::move(createEngine)}));
}

void readFailures(FailureReader reader) {
  library::failureReader() = std::move(reader);
}

}  // namespace mervane
