#include "tests/support/test_machine.h"

#include "support/globals.h"

namespace mervane::tests {

TestMachine::TestMachine() {
  services->keyStore = keyStore;
  services->messageBox = messageBox;
  services->eventLog = eventLog;
  services->textFiles = textFiles;
  services->clock = clock;
  services->screen = screen;
  services->mail = mail;
  services->systemVersion = systemVersion;
  globals::release();
  globals::platform(services);
}

TestMachine::~TestMachine() {
  globals::release();
}

std::shared_ptr<platform::Services> testServices() {
  auto services = std::make_shared<platform::Services>();
  services->keyStore = std::make_shared<MemoryKeyStore>();
  services->messageBox = std::make_shared<RecordingMessageBox>();
  services->eventLog = std::make_shared<RecordingEventLog>();
  services->textFiles = std::make_shared<MemoryTextFiles>();
  services->clock = std::make_shared<ManualClock>();
  services->screen = std::make_shared<RecordingScreen>();
  services->mail = std::make_shared<RecordingMail>();
  services->systemVersion = std::make_shared<FixedSystemVersion>();
  return services;
}

}  // namespace mervane::tests
