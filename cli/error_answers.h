#pragma once

#include <cstdint>
#include <memory>

#include "platform/error_window.h"

namespace mervane::cli {

class Talk;

/// What `--on-error` says: the answer to a failure report.
struct ErrorPolicy {
  /// `ask` asks on a terminal and aborts where there is none.
  enum class Answer { abort, retry, ignore, ask };
  Answer answer = Answer::abort;
  /// With retry: how often in the whole run. Every failure behind that is answered with abort.
  std::int32_t retries = 0;
};

/// Answers failure reports for a run, and remembers what it had to answer. The windows that it makes stand in for
/// the failure dialog: they print the report on standard error and press a button at once.
class ErrorAnswers {
 public:
  /// @param talk outlives the answers, as these outlive the windows.
  ErrorAnswers(Talk& talk, ErrorPolicy policy) : talk_(talk), policy_(policy) {}

  [[nodiscard]] std::unique_ptr<platform::ErrorWindow> createWindow();

  [[nodiscard]] std::int32_t aborted() const noexcept { return aborted_; }
  [[nodiscard]] std::int32_t retried() const noexcept { return retried_; }
  [[nodiscard]] std::int32_t ignored() const noexcept { return ignored_; }
  /// What the first failure that was answered with abort was about: mostly a cell and what is wrong with it.
  [[nodiscard]] const std::string& causeOfAbort() const noexcept { return causeOfAbort_; }

 private:
  friend class ReportPrinter;
  /// Prints the report and returns the key of the button to press.
  [[nodiscard]] const char* answer(const std::string& report);
  [[nodiscard]] static ErrorPolicy::Answer asked();

  Talk& talk_;
  ErrorPolicy policy_;
  std::int32_t aborted_ = 0;
  std::int32_t retried_ = 0;
  std::int32_t ignored_ = 0;
  std::string causeOfAbort_;
};

}  // namespace mervane::cli
