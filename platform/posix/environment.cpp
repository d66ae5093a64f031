#include "platform/posix/environment.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace mervane::posix {

namespace {

const Locale& category(const Environment& environment, const char* name) {
  for (const char* variable : {"LC_ALL", name, "LANG"}) {
    const auto value = environment(variable);
    if (value && !value->empty()) return localeNamed(*value);
  }
  return englishLocale();
}

bool isAbsolute(const std::optional<std::string>& path) {
  return path && !path->empty() && path->front() == '/';
}

/// The home in the user database, for a process that was started without one in its environment.
std::string homeOfUser() {
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) return {};
  return found->pw_dir != nullptr ? found->pw_dir : "";
}

}  // namespace

Environment processEnvironment() {
  return [](const char* name) -> std::optional<std::string> {
    const char* value = std::getenv(name);
    if (value == nullptr) return std::nullopt;
    return std::string(value);
  };
}

Locale localeOf(const Environment& environment) {
  Locale locale = category(environment, "LC_NUMERIC");
  locale.currencySymbol = category(environment, "LC_MONETARY").currencySymbol;

  const Locale& time = category(environment, "LC_TIME");
  locale.dateOrder = time.dateOrder;
  locale.dateSeparator = time.dateSeparator;
  locale.padDate = time.padDate;
  locale.timeSeparator = time.timeSeparator;
  locale.twelveHourClock = time.twelveHourClock;
  locale.padHour = time.padHour;
  locale.am = time.am;
  locale.pm = time.pm;

  const Locale& words = category(environment, "LC_MESSAGES");
  locale.trueWord = words.trueWord;
  locale.falseWord = words.falseWord;
  return locale;
}

std::string configurationFolder(const Environment& environment) {
  const auto configured = environment("XDG_CONFIG_HOME");
  if (isAbsolute(configured)) return *configured;
  const auto home = environment("HOME");
  const std::string folder = isAbsolute(home) ? *home : homeOfUser();
  return folder.empty() ? std::string() : folder + "/.config";
}

}  // namespace mervane::posix
