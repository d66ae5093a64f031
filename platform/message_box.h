#pragma once

#include <string>

namespace mervane::platform {

/// A modal message without a title of the caller's.
class MessageBox {
 public:
  enum class Buttons { ok, abortRetryIgnore };
  enum class Answer { ok, abort, retry, ignore };

  virtual ~MessageBox() = default;
  /// Blocks until the user has answered; closing the box counts as `ok` or `ignore`.
  virtual Answer show(const std::string& text, Buttons buttons) = 0;
};

}  // namespace mervane::platform
