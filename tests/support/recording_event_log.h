#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/event_log.h"
#include "tests/support/call_script.h"

namespace mervane::tests {

class RecordingEventLog : public platform::EventLog {
 public:
  struct Entry {
    std::string text;
    std::int32_t type;
  };

  explicit RecordingEventLog(std::shared_ptr<Journal> journal = nullptr) : script(std::move(journal)) {}

  void write(const std::string& text, std::int32_t type) override {
    script.enter("eventLog.write");
    entries.push_back({text, type});
  }

  std::vector<Entry> entries;
  CallScript script;
};

}  // namespace mervane::tests
