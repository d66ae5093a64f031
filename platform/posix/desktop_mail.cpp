#include "platform/posix/desktop_mail.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane::posix {

namespace {

/// The grandchild: becomes the program, or tells the reason through the pipe. Only calls that are safe between fork
/// and exec.
[[noreturn]] void becomeProgram(const std::array<char*, 3>& arguments, int reasonPipe) {
  setsid();
  const int nothing = ::open("/dev/null", O_RDWR);
  if (nothing >= 0) {
    dup2(nothing, STDIN_FILENO);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
  }
  execvp(arguments[0], arguments.data());
  const int reason = errno;
  [[maybe_unused]] const ssize_t told = ::write(reasonPipe, &reason, sizeof reason);
  _exit(127);
}

[[noreturn]] void refuseToStart(const std::string& program, int reason) {
  throw Failure(runtime::invalidProcedureCall.number, "Cannot start " + program + ": " + std::strerror(reason));
}

}  // namespace

void DesktopMail::open(const std::string& url) {
  std::string program = program_;
  std::string argument = url;
  const std::array<char*, 3> arguments = {program.data(), argument.data(), nullptr};
  std::array<int, 2> reasonPipe{};
  if (pipe2(reasonPipe.data(), O_CLOEXEC) != 0) refuseToStart(program_, errno);

  // Two forks, so that the program belongs to nobody here and leaves no dead child behind.
  const pid_t child = fork();
  if (child == 0) {
    const pid_t grandchild = fork();
    if (grandchild == 0) becomeProgram(arguments, reasonPipe[1]);
    _exit(grandchild < 0 ? 1 : 0);
  }
  const int forkReason = errno;
  ::close(reasonPipe[1]);
  int reason = 0;
  ssize_t told = 0;
  if (child > 0) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
    // The pipe closes when the program has been started.
    while ((told = ::read(reasonPipe[0], &reason, sizeof reason)) < 0 && errno == EINTR) continue;
    if (told <= 0 && WIFEXITED(status) && WEXITSTATUS(status) != 0) {
      told = sizeof reason;
      reason = EAGAIN;
    }
  }
  ::close(reasonPipe[0]);
  if (child < 0) refuseToStart(program_, forkReason);
  if (told > 0) refuseToStart(program_, reason);
}

}  // namespace mervane::posix
