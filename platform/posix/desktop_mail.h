#pragma once

#include <string>
#include <utility>

#include "platform/mail.h"

namespace mervane::posix {

/// Hands a URL to a program of the desktop, which runs on its own from then on. No shell sees the URL.
class DesktopMail final : public platform::Mail {
 public:
  /// @param program looked for on the search path
  explicit DesktopMail(std::string program = "xdg-open") : program_(std::move(program)) {}
  void open(const std::string& url) override;

 private:
  std::string program_;
};

}  // namespace mervane::posix
