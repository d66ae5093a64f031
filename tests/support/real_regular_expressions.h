#pragma once

#include <memory>

#include "platform/regular_expressions.h"

namespace mervane::tests {

/// The regular expressions of the machine that the tests run on, ready for use on the calling thread.
[[nodiscard]] std::shared_ptr<platform::RegularExpressions> realRegularExpressions();

}  // namespace mervane::tests
