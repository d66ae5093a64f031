#include <objbase.h>

#include "platform/windows/regular_expressions.h"
#include "tests/support/real_regular_expressions.h"

namespace mervane::tests {
namespace {

/// The thread's membership in the component model, which its objects need.
struct Apartment {
  Apartment() { CoInitialize(nullptr); }
  ~Apartment() { CoUninitialize(); }
};

}  // namespace

std::shared_ptr<platform::RegularExpressions> realRegularExpressions() {
  static thread_local const Apartment apartment;
  return std::make_shared<windows::RegularExpressions>();
}

}  // namespace mervane::tests
