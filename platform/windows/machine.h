#pragma once

#include "platform/clock.h"
#include "platform/event_log.h"
#include "platform/mail.h"
#include "platform/message_box.h"
#include "platform/screen.h"
#include "platform/system_version.h"
#include "platform/text_files.h"

/// The smaller services of Windows, one class each.
namespace mervane::windows {

class Clock final : public platform::Clock {
 public:
  Date now() override;
};

/// Entries stand in the application log under the source "MervaneClass".
class EventLog final : public platform::EventLog {
 public:
  void write(const std::string& text, std::int32_t type) override;
};

/// The browser object's Navigate2; where there is none, the shell's own opening of a URL.
class Mail final : public platform::Mail {
 public:
  void open(const std::string& url) override;
};

class MessageDialog final : public platform::MessageBox {
 public:
  Answer show(const std::string& text, Buttons buttons) override;
};

class Screen final : public platform::Screen {
 public:
  void pointer(std::int32_t shape) override;
  void beep() override;
};

/// Through GetVersionExA with a record of the size asked for.
class SystemVersion final : public platform::SystemVersion {
 public:
  std::optional<std::int32_t> platformId(std::int32_t recordSize) override;
};

/// The text goes out in the system's 8-bit code page.
class TextFiles final : public platform::TextFiles {
 public:
  void append(const std::string& path, const std::string& text) override;
  void remove(const std::string& path) override;
};

}  // namespace mervane::windows
