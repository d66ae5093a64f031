#pragma once

#include <memory>

#include "platform/services.h"
#include "support/error_handler.h"

/// Module data of one thread, as an apartment has it. Nothing here is shared between threads.
namespace mervane::globals {

/// Sets the machine's services for this thread. An app calls it once, before anything else of the system.
void platform(std::shared_ptr<const platform::Services> services);
/// The services of this thread; raises objectNotSet where none have been set.
[[nodiscard]] const platform::Services& platform();

/// The shared error handler, created at its first use and kept to the end of the thread.
[[nodiscard]] CErrorHandler& errorHandler();
/// Ends the thread's module data, as the end of an apartment does; the next use begins anew.
void release();

}  // namespace mervane::globals
