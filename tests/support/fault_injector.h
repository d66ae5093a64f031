#pragma once

#include <functional>
#include <memory>

#include "tests/support/object_decorator.h"

namespace mervane::tests {

/// Lets one call on a host fail, or all of a kind, the host not being asked. Calls are counted over all objects that
/// come from it.
class FaultInjector {
 public:
  using Refusal = std::function<bool(sheet::Access, sheet::member::Id)>;

  /// @param failingCall from 1; 0 lets none fail.
  FaultInjector(const sheet::ObjectRef& host, int failingCall);
  /// Every call that the refusal answers with true fails.
  FaultInjector(const sheet::ObjectRef& host, Refusal refusal);

  [[nodiscard]] const sheet::ObjectRef& object() const noexcept { return object_; }
  /// Counts anew from now on.
  void failCall(int failingCall);
  /// Whether the failing call has come.
  [[nodiscard]] bool triggered() const noexcept;
  [[nodiscard]] int calls() const noexcept;

 private:
  class Faulty;
  struct Count {
    int failing = 0;
    Refusal refusal = {};
    int calls = 0;
    bool triggered = false;
  };
  std::shared_ptr<Count> count_;
  sheet::ObjectRef object_;
};

}  // namespace mervane::tests
