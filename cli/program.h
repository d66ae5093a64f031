#pragma once

#include <string>
#include <vector>

#include "cli/exit_status.h"

namespace mervane::cli {

/// Runs one command. Raises nothing; what goes wrong is told on standard error.
/// @param arguments without the program's name, in UTF-8.
[[nodiscard]] ExitStatus runProgram(const std::vector<std::string>& arguments) noexcept;

}  // namespace mervane::cli
