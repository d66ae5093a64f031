#include "platform/posix/regular_expressions.h"
#include "tests/support/real_regular_expressions.h"

namespace mervane::tests {

std::shared_ptr<platform::RegularExpressions> realRegularExpressions() {
  return std::make_shared<posix::RegularExpressions>();
}

}  // namespace mervane::tests
