#pragma once

#include <memory>

#include "platform/services.h"

namespace mervane::platform {

/// The services of this machine and user, for the calling thread.
[[nodiscard]] std::shared_ptr<const Services> makeWindowsServices();

}  // namespace mervane::platform
