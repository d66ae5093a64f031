#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <cstdlib>
#include <string_view>

#include "cli/terminal.h"
#include "platform/com/text.h"

namespace mervane::cli::terminal {
namespace {

HANDLE handleOf(std::FILE* stream) {
  return reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(stream)));
}

}  // namespace

bool isTerminal(std::FILE* stream) {
  DWORD mode = 0;
  return GetConsoleMode(handleOf(stream), &mode) != FALSE;
}

std::size_t width(std::FILE* stream) {
  constexpr std::size_t usual = 80;
  CONSOLE_SCREEN_BUFFER_INFO screen{};
  if (GetConsoleScreenBufferInfo(handleOf(stream), &screen) == FALSE) return usual;
  const int columns = screen.srWindow.Right - screen.srWindow.Left + 1;
  return columns > 0 ? static_cast<std::size_t>(columns) : usual;
}

bool wantsColour(std::FILE* stream) {
  const char* noColour = std::getenv("NO_COLOR");
  if (noColour != nullptr && *noColour != '\0') return false;
  const char* kind = std::getenv("TERM");
  if (kind != nullptr && std::string_view(kind) == "dumb") return false;
  // Consoles of old print the codes of colours instead of obeying them.
  DWORD mode = 0;
  return GetConsoleMode(handleOf(stream), &mode) != FALSE && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::optional<std::string> askLine(const std::string& question) {
  if (!isTerminal(stdin) || !isTerminal(stderr)) return std::nullopt;
  static_cast<void>(std::fputs(question.c_str(), stderr));
  static_cast<void>(std::fflush(stderr));
  // Read as the system's wide text: any script can be typed, whatever the console's code page.
  std::wstring line;
  while (line.empty() || line.back() != L'\n') {
    std::array<wchar_t, 256> block{};
    DWORD count = 0;
    SetLastError(ERROR_SUCCESS);
    if (ReadConsoleW(handleOf(stdin), block.data(), block.size(), &count, nullptr) == FALSE || count == 0) {
      // Ctrl-C ends the reading before the system calls the handler, which ends the program.
      if (GetLastError() == ERROR_OPERATION_ABORTED) Sleep(5000);
      return std::nullopt;
    }
    line.append(block.data(), count);
    constexpr wchar_t endOfInput = 26;  // Ctrl-Z
    if (line.front() == endOfInput) return std::nullopt;
  }
  while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r')) line.pop_back();
  return com::fromWide(line);
}

void useBinary(std::FILE* stream) {
  static_cast<void>(::_setmode(::_fileno(stream), _O_BINARY));
}

}  // namespace mervane::cli::terminal
