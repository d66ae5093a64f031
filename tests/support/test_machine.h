#pragma once

#include <memory>

#include "platform/services.h"
#include "tests/support/fixed_system_version.h"
#include "tests/support/journal.h"
#include "tests/support/manual_clock.h"
#include "tests/support/memory_key_store.h"
#include "tests/support/memory_text_files.h"
#include "tests/support/recording_event_log.h"
#include "tests/support/recording_mail.h"
#include "tests/support/recording_message_box.h"
#include "tests/support/recording_screen.h"

namespace mervane::tests {

/// A machine of doubles, and its services in force for this thread as long as it lives. The locale is en-US.
///
/// The window factories and the regular expressions are empty: a test that needs them fills them into `services`.
class TestMachine {
 public:
  TestMachine();
  /// Ends the thread's module data, so that the next test begins anew.
  ~TestMachine();
  TestMachine(const TestMachine&) = delete;
  TestMachine& operator=(const TestMachine&) = delete;

  std::shared_ptr<Journal> journal = std::make_shared<Journal>();
  std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
  std::shared_ptr<MemoryTextFiles> textFiles = std::make_shared<MemoryTextFiles>(journal);
  std::shared_ptr<RecordingMessageBox> messageBox = std::make_shared<RecordingMessageBox>(journal);
  std::shared_ptr<RecordingEventLog> eventLog = std::make_shared<RecordingEventLog>(journal);
  std::shared_ptr<RecordingScreen> screen = std::make_shared<RecordingScreen>(journal);
  std::shared_ptr<RecordingMail> mail = std::make_shared<RecordingMail>(journal);
  std::shared_ptr<FixedSystemVersion> systemVersion = std::make_shared<FixedSystemVersion>();
  std::shared_ptr<MemoryKeyStore> keyStore = std::make_shared<MemoryKeyStore>(journal);
  std::shared_ptr<platform::Services> services = std::make_shared<platform::Services>();
};

/// Services of doubles that nobody looks into, for a test that only needs some to be there.
[[nodiscard]] std::shared_ptr<platform::Services> testServices();

}  // namespace mervane::tests
