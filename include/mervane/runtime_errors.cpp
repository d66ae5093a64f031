#include "mervane/runtime_errors.h"

#include "mervane/failure.h"
#include "mervane/published_errors.h"

namespace mervane {

void raise(const RuntimeError& error) {
  throw Failure(error.number, error.description);
}

void raise(const PublishedError& error, const char* source) {
  throw Failure(error.number, error.description, source);
}

}  // namespace mervane
