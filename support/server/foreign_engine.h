#pragma once

#include <memory>

namespace mervane {
class NetworkEngine;
}

namespace mervane::server {

/// The network engine that is registered on this machine; null where none is. Raises a Failure where one is
/// registered but cannot be made.
[[nodiscard]] std::shared_ptr<NetworkEngine> createForeignEngine();

}  // namespace mervane::server
