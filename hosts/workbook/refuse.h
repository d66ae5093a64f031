#pragma once

#include <string>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane::workbook {

/// Raises the application's own kind of failure with a text for people.
[[noreturn]] inline void refuse(std::string text) {
  throw Failure(runtime::applicationDefined.number, std::move(text));
}

}  // namespace mervane::workbook
