#pragma once

#include <functional>
#include <memory>
#include <string>

#include "mervane/locale.h"
#include "platform/clock.h"
#include "platform/event_log.h"
#include "platform/key_store.h"
#include "platform/mail.h"
#include "platform/message_box.h"
#include "platform/regular_expressions.h"
#include "platform/screen.h"
#include "platform/system_version.h"
#include "platform/text_files.h"

namespace mervane::platform {

class ErrorWindow;
class OptionWindow;

/// What the system asks of the machine it runs on. An app fills every field once for its thread, before
/// anything else of the system is used; the services outlive all objects that use them.
struct Services {
  Locale locale;
  std::shared_ptr<KeyStore> keyStore;
  std::shared_ptr<RegularExpressions> regularExpressions;
  std::shared_ptr<MessageBox> messageBox;
  std::shared_ptr<EventLog> eventLog;
  std::shared_ptr<TextFiles> textFiles;
  std::shared_ptr<Clock> clock;
  std::shared_ptr<Screen> screen;
  std::shared_ptr<Mail> mail;
  std::shared_ptr<SystemVersion> systemVersion;
  /// Makes the window in which an options dialog is shown; one for each dialog.
  std::function<std::unique_ptr<OptionWindow>()> createOptionWindow;
  /// Makes the window in which a failure report is shown; one for each thread.
  std::function<std::unique_ptr<ErrorWindow>()> createErrorWindow;
};

}  // namespace mervane::platform
