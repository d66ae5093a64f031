#pragma once

#include "platform/option_item.h"

/// The dialog's items as its designer left them, before any default or stored value is laid over them.
namespace mervane::dialog {

/// The 52 items of the option list, spacers included.
[[nodiscard]] platform::OptionItems designedOptions();
/// The two items of the button bar.
[[nodiscard]] platform::OptionItems designedButtons();

}  // namespace mervane::dialog
