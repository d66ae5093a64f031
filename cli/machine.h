#pragma once

#include <cstdio>
#include <string>

#include "platform/services.h"

/// The few further things that differ from machine to machine.
namespace mervane::cli {

/// The services of the machine, as a program in a terminal uses them.
[[nodiscard]] platform::Services machineServices();

/// A file opened to be read as bytes; null with `errno` set where that fails. A folder counts as such a failure on
/// some machines, on others only the first reading fails.
[[nodiscard]] std::FILE* openForReading(const std::string& path);

}  // namespace mervane::cli
