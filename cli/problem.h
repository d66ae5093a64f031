#pragma once

#include <exception>
#include <string>
#include <utility>

#include "cli/exit_status.h"

namespace mervane::cli {

/// What ends a command before its time: the exit status, what is wrong and where, and what the user can do.
class Problem : public std::exception {
 public:
  /// @param message names the place and the offending text; no trailing full stop or newline.
  /// @param advice one sentence on what to do; may be empty.
  Problem(ExitStatus status, std::string message, std::string advice = {})
      : status_(status), message_(std::move(message)), advice_(std::move(advice)) {}

  [[nodiscard]] ExitStatus status() const noexcept { return status_; }
  [[nodiscard]] const std::string& message() const noexcept { return message_; }
  [[nodiscard]] const std::string& advice() const noexcept { return advice_; }
  [[nodiscard]] const char* what() const noexcept override { return message_.c_str(); }

 private:
  ExitStatus status_;
  std::string message_;
  std::string advice_;
};

}  // namespace mervane::cli
