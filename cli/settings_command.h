#pragma once

#include <string>

#include "cli/exit_status.h"

namespace mervane::cli {

/// What the command `settings` was asked to do.
struct SettingsOptions {
  enum class Action { list, set, clear, exportAll, importAll };

  Action action = Action::list;
  std::string key;
  std::string value;
  std::string file = "-";  ///< of an export or an import; "-" for the standard streams
};

/// `mervane settings`: lists, sets, clears, exports and imports what the options dialog remembers. Raises a Problem.
/// The platform's services are in force.
[[nodiscard]] ExitStatus settings(const SettingsOptions& options);

}  // namespace mervane::cli
