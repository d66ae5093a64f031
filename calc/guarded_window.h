#pragma once

#include <functional>
#include <memory>

#include "platform/option_window.h"

namespace mervane::addin {

/// Asked when "Clusterize" is pressed, with what the dialog holds then.
/// @return false: nothing is run, and the dialog stays open
using MayRun = std::function<bool(const platform::OptionItems& options)>;

/// An option window whose "Clusterize" reaches the dialog only when it may.
[[nodiscard]] std::unique_ptr<platform::OptionWindow> guardedWindow(std::unique_ptr<platform::OptionWindow> window,
                                                                    MayRun mayRun);

}  // namespace mervane::addin
