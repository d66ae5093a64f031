#pragma once

#include "hosts/calc/office.h"

namespace mervane::tests {

/// The office of this test program.
[[nodiscard]] calc::Office& sharedOffice();

}  // namespace mervane::tests
