#include "cli/machine.h"

#include <cerrno>

#include "cli/paths.h"
#include "platform/windows/windows_services.h"

namespace mervane::cli {

platform::Services machineServices() {
  return *platform::makeWindowsServices();
}

std::FILE* openForReading(const std::string& path) {
  const std::filesystem::path file = toPath(path);
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) {
    errno = EISDIR;
    return nullptr;
  }
  return ::_wfopen(file.c_str(), L"rb");
}

}  // namespace mervane::cli
