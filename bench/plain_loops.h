#pragma once

#include "engine/kernel.h"

namespace mervane {

/// The winner search and the gathering as anybody would write them: nested loops over units and inputs, left to the
/// optimiser. One lane, so that the weights lie unit by unit. What the kernels of the engine are measured against and,
/// bit by bit, compared with.
extern const engine::Kernel plainLoops;

}  // namespace mervane
