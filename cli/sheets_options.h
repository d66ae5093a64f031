#pragma once

#include <string>

namespace mervane::cli {

/// What the command `sheets` was asked to do.
struct SheetsOptions {
  std::string input;
  bool json = false;
};

}  // namespace mervane::cli
