#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace mervane {

/// The one exception type of the system: a number, a text for people, and who raised it.
///
/// Numbers are either automation errors (HRESULTs on the base 0x80040000, so negative) or the small
/// run-time numbers of `runtime_errors.h`. What a binary interface or a command line makes of a
/// failure is decided once, at that border.
class Failure : public std::exception {
 public:
  Failure(std::int32_t number, std::string description, std::string source = {})
      : number_(number), description_(std::move(description)), source_(std::move(source)) {}

  [[nodiscard]] std::int32_t number() const noexcept { return number_; }
  /// UTF-8, without a trailing newline.
  [[nodiscard]] const std::string& description() const noexcept { return description_; }
  /// A procedure key, "<server>.<class>", or empty where the raiser names none.
  [[nodiscard]] const std::string& source() const noexcept { return source_; }
  [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string description_;
  std::string source_;
};

}  // namespace mervane
