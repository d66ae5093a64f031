#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>

#include "cli/exit_status.h"
#include "cli/interruption.h"

namespace mervane::cli::interruption {
namespace {

// Signal handlers read these; all are lock-free.
std::atomic<bool> hasFile{false};
constexpr std::size_t longestPath = 4096;
std::array<char, longestPath> file{};

static_assert(std::atomic<bool>::is_always_lock_free);

void removeFile() noexcept {
  if (hasFile.load()) static_cast<void>(::unlink(file.data()));
}

extern "C" void onInterrupt(int) {
  if (note()) return;
  removeFile();
  ::_exit(static_cast<int>(ExitStatus::interrupted));
}

extern "C" void onTermination(int number) {
  removeFile();
  // The program dies of the signal, so that whoever sent it sees that it did.
  static_cast<void>(std::signal(number, SIG_DFL));
  static_cast<void>(std::raise(number));
}

void handle(int number, void (*handler)(int)) {
  struct sigaction action {};
  if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) return;
  action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  ::sigemptyset(&action.sa_mask);
  static_cast<void>(::sigaction(number, &action, nullptr));
}

}  // namespace

void watch() {
  handle(SIGINT, onInterrupt);
  handle(SIGTERM, onTermination);
  handle(SIGHUP, onTermination);
  // A closed pipe and a file beyond its allowed size are seen as failed writes, so that they can be told properly.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

void guardFile(const std::string& path) {
  hasFile.store(false);
  if (path.size() >= longestPath) return;
  std::ranges::copy(path, file.begin());
  file[path.size()] = '\0';
  hasFile.store(true);
}

void releaseFile() noexcept {
  hasFile.store(false);
}

void endByBrokenPipe() {
  removeFile();
  static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
  static_cast<void>(std::raise(SIGPIPE));
  ::_exit(static_cast<int>(ExitStatus::fileTrouble));
}

}  // namespace mervane::cli::interruption
