#pragma once

#include <memory>

#include "platform/error_window.h"

namespace mervane::windows {

/// A window of standard controls: a title band, a report that can be read and copied, and a bar of buttons.
[[nodiscard]] std::unique_ptr<platform::ErrorWindow> createErrorWindow();

}  // namespace mervane::windows
