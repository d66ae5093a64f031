#pragma once

#include <signal.h>  // NOLINT(modernize-deprecated-headers): kill is POSIX.
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace mervane::tests {

/// Another process that runs a function and ends with its answer.
class ChildProcess {
 public:
  explicit ChildProcess(const std::function<int()>& body) : id_(fork()) {
    if (id_ == 0) _exit(body());
  }
  ~ChildProcess() {
    if (id_ > 0) {
      killNow();
      (void)wait();
    }
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  void killNow() const { ::kill(id_, SIGKILL); }
  /// The exit status, or minus the signal that ended it.
  int wait() {
    int status = 0;
    waitpid(id_, &status, 0);
    id_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

 private:
  pid_t id_;
};

}  // namespace mervane::tests
