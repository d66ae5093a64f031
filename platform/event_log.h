#pragma once

#include <cstdint>
#include <string>

namespace mervane::platform {

/// The machine's log of application events.
class EventLog {
 public:
  static constexpr std::int32_t errorType = 1;

  virtual ~EventLog() = default;
  /// Raises a Failure where the entry cannot be written.
  virtual void write(const std::string& text, std::int32_t type) = 0;
};

}  // namespace mervane::platform
