#pragma once

#include <cstdint>
#include <vector>

#include "engine/kernel.h"

namespace mervane::engine {

/// All kernels that this processor can run, the portable one first.
[[nodiscard]] std::vector<const Kernel*> availableKernels();

/// The kernel to use for a network of this size on this processor. All of them give the same bits.
[[nodiscard]] const Kernel& chooseKernel(std::int32_t units, std::int32_t inputs);

}  // namespace mervane::engine
