#pragma once

#include <memory>

#include "component/network_engine/network_engine.h"

namespace mervane {

/// A new built-in network, without a network in it until `Create` is called.
[[nodiscard]] std::shared_ptr<NetworkEngine> createNetworkEngine();

}  // namespace mervane
