#include "platform/posix/system_log.h"

#include <syslog.h>

namespace mervane::posix {

void SystemLog::write(const std::string& text, std::int32_t type) {
  const int priority = type == errorType ? LOG_ERR : LOG_INFO;
  syslog(LOG_USER | priority, "mervane: %s", text.c_str());
}

}  // namespace mervane::posix
