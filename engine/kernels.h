#pragma once

#include "engine/kernel.h"

namespace mervane::engine {

extern const Kernel portableKernel;
// These exist on x86 processors only.
extern const Kernel sse2Kernel;
extern const Kernel avx2Kernel;    ///< Check the processor first.
extern const Kernel avx512Kernel;  ///< Check the processor first.

}  // namespace mervane::engine
