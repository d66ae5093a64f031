#pragma once

#include <cstdint>
#include <string>

#include "platform/event_log.h"

namespace mervane::posix {

/// The system log.
class SystemLog final : public platform::EventLog {
 public:
  void write(const std::string& text, std::int32_t type) override;
};

}  // namespace mervane::posix
