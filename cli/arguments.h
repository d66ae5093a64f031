#pragma once

#include <string>
#include <variant>
#include <vector>

#include "cli/cluster_options.h"
#include "cli/settings_command.h"
#include "cli/sheets_options.h"

namespace mervane::cli {

/// A text that was asked for in place of work: a help page or the version.
struct TextToPrint {
  std::string text;
};

/// What the command line asks for; one alternative for each command.
using Request = std::variant<TextToPrint, ClusterOptions, SheetsOptions, SettingsOptions>;

/// @param arguments without the program's name. Raises a Problem with the status usage.
[[nodiscard]] Request parseArguments(const std::vector<std::string>& arguments);

}  // namespace mervane::cli
