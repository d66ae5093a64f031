#pragma once

#include <string>

#include "cli/workbook_options.h"

namespace mervane::cli {

/// What the command `sheets` was asked to do.
struct SheetsOptions {
  std::string input;
  bool json = false;
  BookHost host = BookHost::byName;
};

}  // namespace mervane::cli
