#include "mervane/runtime_errors.h"

#include "mervane/failure.h"

namespace mervane {

void raise(const RuntimeError& error) {
  throw Failure(error.number, error.description);
}

}  // namespace mervane
