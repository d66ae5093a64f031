#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include "spreadsheet/object.h"

namespace mervane::tests {

/// The enumerator of a host as the platform's; one reference.
[[nodiscard]] IUnknown* wrapEnumerator(sheet::ObjectRef enumerator);

}  // namespace mervane::tests
