#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "mervane/failure.h"
#include "mervane/service_errors.h"
#include "support/error_handler.h"
#include "support/globals.h"
#include "support/wrapped_failure.h"

/// The kinds of procedure. Each procedure of the system has one, visible in its first line.
namespace mervane {

/// The name of the library's file without its extension, the first half of the sources that services give.
inline constexpr const char* serverName = "MervaneCls31";

/// The statements of a traced procedure, run one by one. A failing statement is shown once; the answer abandons
/// the procedure, runs that statement again, or goes on behind it.
///
/// Steps do not nest: one runs inside another only where a procedure that has its own Steps is called.
class Steps {
 public:
  Steps() = default;
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  template <class Statement>
  void operator()(Statement&& statement) {
    for (;;) {
      try {
        statement();
        return;
      } catch (const Failure& failure) {
        // A failure of the handling itself leaves the procedure from here, its stack entry staying behind.
        switch (globals::errorHandler().HandleError({}, failure)) {
          case ehrRetry:
            break;
          case ehrIgnore:
            return;
          case ehrAbort:
            globals::errorHandler().CallStackClear();
            throw Abandoned{this};
          default:
            throw Abandoned{this};
        }
      }
    }
  }

  /// A condition as a statement of its own. Ignored, it counts as true, because the next statement to run is then the
  /// first one inside the conditional.
  template <class Test>
  [[nodiscard]] bool holds(Test&& test) {
    bool result = true;
    (*this)([&] { result = test(); });
    return result;
  }

  /// Leaves the procedure without its exit, so that its stack entry stays.
  [[noreturn]] void leave() { throw Abandoned{this}; }

 private:
  struct Abandoned {
    const Steps* procedure;
  };

  template <class Body>
  friend void traced(const char* key, Body&& body);
};

/// A statement of a swallowed stretch: a failure is dropped without a word.
template <class Statement>
void attempt(Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
  } catch (const Failure&) {  // NOLINT(bugprone-empty-catch): dropping it is the point.
  }
}

/// A traced procedure: on the call stack while it runs, its failures shown where they happen and raised to nobody.
/// @param key "MervaneClass3.<class>.<procedure>"
/// @param body takes the Steps; whatever it leaves in its captured results stands after an abort.
template <class Body>
void traced(const char* key, Body&& body) {
  Steps step;
  try {
    step([&] { globals::errorHandler().CallStackPush(key, {}); });
    body(step);
    step([&] { globals::errorHandler().CallStackPop(); });
  } catch (const Steps::Abandoned& abandoned) {
    if (abandoned.procedure != &step) throw;
  } catch (const Failure&) {
    throw;  // Of the handling itself: the entry stays behind.
  } catch (...) {
    // What a client's own code throws is no failure of the system's. It passes, and no entry is left of it.
    attempt([] { globals::errorHandler().CallStackPop(); });
    throw;
  }
}

/// A wrapping procedure: every failure becomes "<class> component failure" with the key as its source.
template <class Body>
decltype(auto) wrapping(const char* className, const char* key, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (const Failure& failure) {
    throw WrappedFailure(eErr_ComponentFailure, std::string(className) + " component failure", key, failure);
  }
}

/// The trap of a service procedure, disarmed by the argument checks that refuse.
class ServiceTrap {
 public:
  explicit ServiceTrap(const char* className) : className_(className) {}

  /// Disarms the trap and raises, so that the caller meets this very failure.
  [[noreturn]] void refuse(std::int32_t number, const char* description) { refuse(number, description, source()); }
  [[noreturn]] void refuse(std::int32_t number, const char* description, const std::string& otherSource) {
    armed_ = false;
    throw Failure(number, description, otherSource);
  }

  [[nodiscard]] bool armed() const noexcept { return armed_; }
  [[nodiscard]] std::string source() const { return std::string(serverName) + "." + className_; }

 private:
  const char* className_;
  bool armed_ = true;
};

/// A service procedure: what its checks refuse passes unchanged, anything unforeseen becomes
/// "<class> component failure" with the number of that class.
/// @param body takes the ServiceTrap.
template <class Body>
decltype(auto) service(const char* className, std::int32_t number, Body&& body) {
  ServiceTrap trap(className);
  try {
    return std::forward<Body>(body)(trap);
  } catch (const Failure& failure) {
    if (!trap.armed()) throw;
    throw WrappedFailure(number, std::string(className) + " component failure", trap.source(), failure);
  }
}

/// A test in a swallowed stretch. A failing test counts as true, because the next statement to run is then the
/// first one inside the conditional.
template <class Test>
[[nodiscard]] bool holdsOrFails(Test&& test) {
  try {
    return std::forward<Test>(test)();
  } catch (const Failure&) {
    return true;
  }
}

}  // namespace mervane
