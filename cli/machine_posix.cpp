#include "cli/machine.h"
#include "platform/posix/services.h"

namespace mervane::cli {

platform::Services machineServices() {
  return posix::makePosixServices();
}

std::FILE* openForReading(const std::string& path) {
  return std::fopen(path.c_str(), "rb");
}

}  // namespace mervane::cli
