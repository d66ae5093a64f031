#pragma once

#include <string>

#include "platform/posix/environment.h"
#include "platform/services.h"

namespace mervane::posix {

/// All services of a POSIX machine but the two windows, which the app adds. Questions are asked on the terminal, if
/// there is one; trouble with the settings store goes to standard error and to the system log, each kind once.
[[nodiscard]] platform::Services makePosixServices(const Environment& environment = processEnvironment());

/// The file of the settings store: mervane/settings.db in the configuration folder, or in the current directory where
/// the environment knows no such folder.
[[nodiscard]] std::string settingsFile(const Environment& environment = processEnvironment());

}  // namespace mervane::posix
