#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "cli/terminal.h"

namespace mervane::cli::terminal {

bool isTerminal(std::FILE* stream) {
  return ::isatty(::fileno(stream)) == 1;
}

std::size_t width(std::FILE* stream) {
  constexpr std::size_t usual = 80;
  winsize size{};
  if (::ioctl(::fileno(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return usual;
  return size.ws_col;
}

bool wantsColour(std::FILE* stream) {
  // NO_COLOR counts when it is present and not empty, as its convention says.
  const char* noColour = std::getenv("NO_COLOR");
  if (noColour != nullptr && *noColour != '\0') return false;
  const char* kind = std::getenv("TERM");
  if (kind != nullptr && std::string_view(kind) == "dumb") return false;
  return isTerminal(stream);
}

std::optional<std::string> askLine(const std::string& question) {
  if (!isTerminal(stdin) || !isTerminal(stderr)) return std::nullopt;
  static_cast<void>(std::fputs(question.c_str(), stderr));
  static_cast<void>(std::fflush(stderr));
  std::string line;
  for (int c = std::getchar(); c != '\n'; c = std::getchar()) {
    if (c == EOF) return std::nullopt;
    line += static_cast<char>(c);
  }
  return line;
}

void useBinary(std::FILE*) {}

}  // namespace mervane::cli::terminal
