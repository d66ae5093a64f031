#pragma once

#include <functional>
#include <optional>
#include <string>

#include "mervane/locale.h"

namespace mervane::posix {

/// One variable of an environment; empty where it is not set.
using Environment = std::function<std::optional<std::string>(const char* name)>;

/// The environment of the process.
[[nodiscard]] Environment processEnvironment();

/// The regional settings that the environment asks for: LC_ALL before LC_NUMERIC (numbers), LC_MONETARY (the currency
/// symbol), LC_TIME (dates, times) and LC_MESSAGES (words), each before LANG. English where nothing is asked for or
/// the name is unknown.
[[nodiscard]] Locale localeOf(const Environment& environment);

/// The user's folder for settings: XDG_CONFIG_HOME where that is an absolute path, else .config in the user's home.
/// Empty where there is neither.
[[nodiscard]] std::string configurationFolder(const Environment& environment);

}  // namespace mervane::posix
