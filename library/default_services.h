#pragma once

#include <memory>

#include "mervane/library.h"
#include "platform/services.h"

namespace mervane::library {

/// Services of a machine without a screen, for one thread. Failure reports go to this thread's reader.
[[nodiscard]] std::shared_ptr<const platform::Services> defaultServices();

/// The reader of this thread; an empty one stands for standard error and abort.
[[nodiscard]] FailureReader& failureReader() noexcept;

}  // namespace mervane::library
