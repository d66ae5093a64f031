#pragma once

#include <memory>

#include "platform/services.h"
#include "support/error_handler.h"

namespace mervane {
class frmErrorMessage;
}

/// Module data of one thread, as an apartment has it. Nothing here is shared between threads.
namespace mervane::globals {

/// Sets the machine's services for this thread. An app calls it once, before anything else of the system.
void platform(std::shared_ptr<const platform::Services> services);
/// The services of this thread; raises objectNotSet where none have been set.
[[nodiscard]] const platform::Services& platform();
/// The locale of the services, and the English one where none have been set.
[[nodiscard]] const Locale& locale() noexcept;

/// The shared error handler, created at its first use and kept to the end of the thread.
[[nodiscard]] CErrorHandler& errorHandler();
/// The one failure dialog of this thread, created at its first use.
[[nodiscard]] frmErrorMessage& errorMessageForm();
/// Ends the thread's module data, services included, as the end of an apartment does; the next use begins anew.
void release() noexcept;

}  // namespace mervane::globals
