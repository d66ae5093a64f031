#pragma once

#include "mervane/locale.h"

namespace mervane::windows {

/// The user's regional settings as they are now.
[[nodiscard]] Locale userLocale();

}  // namespace mervane::windows
