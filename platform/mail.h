#pragma once

#include <string>

namespace mervane::platform {

/// Whatever hands a URL to the program that the user has for it.
class Mail {
 public:
  virtual ~Mail() = default;
  /// @param url a mailto: URL, passed on as it stands. Raises a Failure where no program can be started.
  virtual void open(const std::string& url) = 0;
};

}  // namespace mervane::platform
