#include "engine/create_network_engine.h"

#include "engine/competitive_network.h"

namespace mervane {

std::shared_ptr<NetworkEngine> createNetworkEngine() {
  return std::make_shared<CompetitiveNetwork>();
}

}  // namespace mervane
