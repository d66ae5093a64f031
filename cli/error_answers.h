#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "cli/problem.h"
#include "platform/error_window.h"

namespace mervane::cli {

class Talk;

/// A run that was given up because of a failure that has been reported.
/// @param cause what `ErrorAnswers::causeOfAbort` says
[[nodiscard]] Problem failedRun(const std::string& cause);

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

  /// A stretch of the program in which the first answer abort ends the run at once: it raises the Problem of a failed
  /// run, status engineFailure, which passes through the component. Outside, and behind that, an abort gives up one
  /// procedure, as it does everywhere.
  class Run {
   public:
    explicit Run(ErrorAnswers& answers) noexcept : answers_(answers) { answers_.abortEndsRun_ = true; }
    ~Run() { answers_.abortEndsRun_ = false; }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

   private:
    ErrorAnswers& answers_;
  };

  [[nodiscard]] std::int32_t aborted() const noexcept { return aborted_; }
  [[nodiscard]] std::int32_t retried() const noexcept { return retried_; }
  [[nodiscard]] std::int32_t ignored() const noexcept { return ignored_; }
  /// What the first failure that was answered with abort was about: mostly a cell and what is wrong with it.
  [[nodiscard]] const std::string& causeOfAbort() const noexcept { return causeOfAbort_; }

 private:
  friend class ReportPrinter;
  /// Prints the report and returns the key of the button to press. Behind an abort that has ended the run nothing is
  /// printed or asked any more.
  [[nodiscard]] const char* answer(const std::string& report);
  [[nodiscard]] static ErrorPolicy::Answer asked();

  Talk& talk_;
  ErrorPolicy policy_;
  bool abortEndsRun_ = false;
  bool runHasEnded_ = false;
  std::int32_t aborted_ = 0;
  std::int32_t retried_ = 0;
  std::int32_t ignored_ = 0;
  std::string causeOfAbort_;
};

}  // namespace mervane::cli
