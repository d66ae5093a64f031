#pragma once

#include <memory>

#include "platform/option_window.h"

namespace mervane::windows {

/// A window of standard controls: a list of options that scrolls, above a bar of buttons.
[[nodiscard]] std::unique_ptr<platform::OptionWindow> createOptionWindow();

}  // namespace mervane::windows
