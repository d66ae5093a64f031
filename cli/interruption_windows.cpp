#include <windows.h>

#include <array>
#include <atomic>
#include <cstdlib>

#include "cli/exit_status.h"
#include "cli/interruption.h"
#include "platform/com/text.h"

namespace mervane::cli::interruption {
namespace {

// The system calls the handler on a thread of its own, so these are shared with that.
std::atomic<bool> hasFile{false};
constexpr std::size_t longestPath = 32768;
std::array<wchar_t, longestPath> file{};

void removeFile() noexcept {
  // NB: the file is open, but in a way that lets it be deleted.
  if (hasFile.load()) static_cast<void>(DeleteFileW(file.data()));
}

[[noreturn]] void end(ExitStatus status) noexcept {
  removeFile();
  std::_Exit(static_cast<int>(status));
}

BOOL WINAPI onEvent(DWORD event) {
  switch (event) {
    case CTRL_C_EVENT:
    case CTRL_BREAK_EVENT:
      if (note()) return TRUE;
      end(ExitStatus::interrupted);
    default:
      // The window is closed, or the user or the machine leaves: the system ends the program after this.
      removeFile();
      return FALSE;
  }
}

}  // namespace

void watch() {
  // Where the program was started with Ctrl-C ignored, the system goes on ignoring it.
  static_cast<void>(SetConsoleCtrlHandler(onEvent, TRUE));
}

void guardFile(const std::string& path) {
  hasFile.store(false);
  const std::wstring wide = com::toWide(path);
  if (wide.size() >= longestPath) return;
  file[wide.copy(file.data(), wide.size())] = L'\0';
  hasFile.store(true);
}

void releaseFile() noexcept {
  hasFile.store(false);
}

void endByBrokenPipe() {
  end(ExitStatus::fileTrouble);
}

}  // namespace mervane::cli::interruption
