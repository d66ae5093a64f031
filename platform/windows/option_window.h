#pragma once

#include <memory>

#include "platform/option_window.h"

namespace mervane::windows {

/// A window of standard controls: a list of options that scrolls, above a bar of buttons.
[[nodiscard]] std::unique_ptr<platform::OptionWindow> createOptionWindow();
/// The same for a screen of another resolution than the one it stands on.
[[nodiscard]] std::unique_ptr<platform::OptionWindow> createOptionWindowFor(int pixelsPerInch);

}  // namespace mervane::windows
