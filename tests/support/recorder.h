#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "tests/support/object_decorator.h"

namespace mervane::tests {

/// Writes down every call on a host, in order: "get ActiveSheet.Shapes", "put B7.Value = 3", "call B7:E7.Sort(E7, 1)".
/// A call that failed ends in " fails".
///
/// An object is called by the way that led to it; the application itself has no name.
class Recorder {
 public:
  /// A name of the host's own for one of its objects, such as an address; empty for the way that led to it.
  using Namer = std::function<std::string(const sheet::Object&)>;

  explicit Recorder(const sheet::ObjectRef& host, Namer namer = {});

  [[nodiscard]] const sheet::ObjectRef& object() const noexcept { return object_; }
  [[nodiscard]] const std::vector<std::string>& calls() const noexcept;
  /// The calls whose text contains the part.
  [[nodiscard]] std::vector<std::string> callsWith(const std::string& part) const;
  void clear();

 private:
  class Recorded;
  struct Log {
    Namer namer;
    std::vector<std::string> calls;
  };
  std::shared_ptr<Log> log_;
  sheet::ObjectRef object_;
};

}  // namespace mervane::tests
