#pragma once

#include <string>

namespace mervane::tests {

/// Whatever has a name in a record of calls.
class Named {
 public:
  virtual ~Named() = default;
  [[nodiscard]] virtual std::string name() const = 0;
};

}  // namespace mervane::tests
