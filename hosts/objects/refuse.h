#pragma once

#include <string_view>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane::hosts {

/// Raises applicationDefined, the spreadsheet application's own kind of failure, with a text for people.
[[noreturn]] inline void refuse(std::string_view why) {
  throw Failure(runtime::applicationDefined.number, std::string(why));
}

}  // namespace mervane::hosts
