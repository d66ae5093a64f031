#pragma once

#include <memory>

namespace mervane {
class Classifier3;
}

namespace mervane::server {

/// Puts the system together for the calling thread's apartment: its services at the first use, and the registered
/// network engine, or the built-in one where none is registered.
[[nodiscard]] std::shared_ptr<Classifier3> composeClassifier();

}  // namespace mervane::server
