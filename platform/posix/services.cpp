#include "platform/posix/services.h"

#include <unistd.h>

#include <iostream>
#include <memory>

#include "platform/posix/desktop_mail.h"
#include "platform/posix/no_nt_version.h"
#include "platform/posix/regular_expressions.h"
#include "platform/posix/sqlite_key_store.h"
#include "platform/posix/system_clock.h"
#include "platform/posix/system_log.h"
#include "platform/posix/terminal_message_box.h"
#include "platform/posix/terminal_screen.h"
#include "platform/posix/text_files.h"

namespace mervane::posix {

std::string settingsFile(const Environment& environment) {
  const std::string folder = configurationFolder(environment);
  return folder.empty() ? "mervane-settings.db" : folder + "/mervane/settings.db";
}

platform::Services makePosixServices(const Environment& environment) {
  platform::Services services;
  services.locale = localeOf(environment);
  services.eventLog = std::make_shared<SystemLog>();
  services.keyStore = std::make_shared<SqliteKeyStore>(settingsFile(environment),
                                                       [log = services.eventLog](const std::string& trouble) {
                                                         std::cerr << "mervane: " << trouble << '\n';
                                                         log->write(trouble, platform::EventLog::errorType);
                                                       });
  services.regularExpressions = std::make_shared<RegularExpressions>();
  const bool interactive = isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0;
  services.messageBox = std::make_shared<TerminalMessageBox>(interactive ? &std::cin : nullptr, std::cerr);
  services.textFiles = std::make_shared<TextFiles>();
  services.clock = std::make_shared<SystemClock>();
  services.screen = std::make_shared<TerminalScreen>(STDERR_FILENO);
  services.mail = std::make_shared<DesktopMail>();
  services.systemVersion = std::make_shared<NoNtVersion>();
  return services;
}

}  // namespace mervane::posix
