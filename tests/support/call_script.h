#pragma once

#include <memory>
#include <string>
#include <utility>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "tests/support/journal.h"

namespace mervane::tests {

/// Counts the calls on a double, enters them in the journal, and lets one of them fail.
class CallScript {
 public:
  /// @param journal shared with the other doubles of the machine; null where nobody reads it.
  explicit CallScript(std::shared_ptr<Journal> journal = nullptr) : journal_(std::move(journal)) {}

  /// The call of this number fails, counted from 1 from now on; 0 lets none fail.
  void failCall(int number, const RuntimeError& error = runtime::pathFileAccess) {
    calls_ = 0;
    failing_ = number;
    following_ = false;
    error_ = error;
  }
  /// Every call behind the chosen one fails too.
  void failFollowing() { following_ = true; }
  /// Every call fails.
  void failAlways(const RuntimeError& error = runtime::pathFileAccess) {
    always_ = true;
    error_ = error;
  }
  [[nodiscard]] int calls() const noexcept { return calls_; }
  /// Whether the chosen call has come.
  [[nodiscard]] bool triggered() const noexcept { return failing_ != 0 && calls_ >= failing_; }

  /// The double's first statement in each operation. Raises the chosen failure.
  void enter(std::string entry) {
    if (due(std::move(entry))) raise(error_);
  }
  /// The same for a double that answers with a number instead of raising.
  [[nodiscard]] bool due(std::string entry) {
    if (journal_) journal_->add(std::move(entry));
    ++calls_;
    return always_ || calls_ == failing_ || (following_ && triggered());
  }

 private:
  std::shared_ptr<Journal> journal_;
  int calls_ = 0;
  int failing_ = 0;
  bool always_ = false;
  bool following_ = false;
  RuntimeError error_ = runtime::pathFileAccess;
};

}  // namespace mervane::tests
