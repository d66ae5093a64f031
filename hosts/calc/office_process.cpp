#include "hosts/calc/office_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <vector>

#include "hosts/calc/office_call.h"

namespace mervane::calc {

namespace {

constexpr int pauseMilliseconds = 200;  ///< between two looks whether the office still runs
constexpr int mostLooks = 100;          ///< whether it has ended, once it was asked to
constexpr useconds_t lookMicroseconds = 20'000;

/// A new folder; empty where there is no room for one.
std::filesystem::path makeFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "mervane-office-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) return {};
  return pattern;
}

/// Leaves no descriptor of this program open but two, so that nobody waits for an end that does not come.
void keepOnly(int kept, int alsoKept) {
  const int nothing = ::open("/dev/null", O_RDWR);
  for (int one = 0; one < 3; ++one) static_cast<void>(::dup2(nothing, one));
  const long most = ::sysconf(_SC_OPEN_MAX);
  for (int one = 3; one < most && one < 4096; ++one) {
    if (one != kept && one != alsoKept) static_cast<void>(::close(one));
  }
}

pid_t startOffice(const std::vector<std::string>& command, const std::filesystem::path& folder) {
  const pid_t office = ::fork();
  // A group of its own takes in whatever the office starts. NB: on both sides, since the watcher may want to end the
  // group before the new process has come to do anything.
  if (office > 0) static_cast<void>(::setpgid(office, office));
  if (office != 0) return office;
  static_cast<void>(::setpgid(0, 0));
  static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
  // An office that is ended leaves its temporary files; they go with the folder.
  static_cast<void>(::setenv("TMPDIR", folder.c_str(), 1));
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& one : command) arguments.push_back(const_cast<char*>(one.c_str()));
  arguments.push_back(nullptr);
  ::execv(arguments.front(), arguments.data());
  ::_exit(127);
}

std::vector<std::string> commandFor(const std::filesystem::path& folder, const std::string& pipe) {
  return {OfficeProcess::program().string(),
          "-env:UserInstallation=file://" + (folder / "profile").string(),
          "--headless",
          "--norestore",
          "--nologo",
          "--nodefault",
          "--nolockcheck",
          "--accept=pipe,name=" + pipe + ";urp"};
}

/// The folder's dying owners may still write into it.
void removeFolder(const std::filesystem::path& folder) {
  std::error_code ignored;
  for (int look = 0; look < mostLooks; ++look) {
    std::filesystem::remove_all(folder, ignored);
    if (!std::filesystem::exists(folder, ignored)) return;
    static_cast<void>(::usleep(lookMicroseconds));
  }
}

/// The watcher's whole life. The folder is made here, so that it goes however early the program ends.
/// @param answer where the folder's name is written to
[[noreturn]] void watch(int lifeline, int answer, const std::string& pipe, const std::string& socket) {
  // A Ctrl-C at the terminal is for the program alone; it tells the office by ending, or not at all.
  static_cast<void>(::setsid());
  keepOnly(lifeline, answer);
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  const std::filesystem::path folder = makeFolder();
  const std::string& name = folder.native();
  const bool isTold = ::write(answer, name.data(), name.size()) == static_cast<ssize_t>(name.size());
  static_cast<void>(::close(answer));
  if (folder.empty()) ::_exit(1);
  if (!isTold) {
    removeFolder(folder);
    ::_exit(1);
  }
  const std::vector<std::string> command = commandFor(folder, pipe);
  const pid_t office = startOffice(command, folder);
  pollfd waiting{lifeline, POLLIN, 0};
  bool runs = office > 0;
  while (runs) {
    if (::poll(&waiting, 1, pauseMilliseconds) > 0) break;
    runs = ::waitpid(office, nullptr, WNOHANG) == 0;
  }
  // Asked to end, the office clears its sockets away; it is given a moment for that.
  if (runs) static_cast<void>(::kill(-office, SIGTERM));
  for (int look = 0; runs && look < mostLooks; ++look) {
    static_cast<void>(::usleep(lookMicroseconds));
    runs = ::waitpid(office, nullptr, WNOHANG) == 0;
  }
  if (office > 0) static_cast<void>(::kill(-office, SIGKILL));
  if (runs) static_cast<void>(::waitpid(office, nullptr, 0));
  removeFolder(folder);
  static_cast<void>(::unlink(socket.c_str()));
  ::_exit(0);
}

/// Where the office's libraries put the socket of a pipe.
std::string socketOf(const std::string& pipe) {
  return "/tmp/OSL_PIPE_" + std::to_string(::getuid()) + "_" + pipe;
}

}  // namespace

std::filesystem::path OfficeProcess::program() {
  return std::filesystem::path(MERVANE_OFFICE_PROGRAM) / "soffice";
}

OfficeProcess::OfficeProcess(const std::string& pipe) {
  const auto refuseStart = [](int reason) {
    refuse(std::string("LibreOffice cannot be started: ") + std::strerror(reason));
  };
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0)
    refuse(std::string("LibreOffice cannot be watched: ") + std::strerror(errno));
  std::array<int, 2> answer{};
  if (::pipe2(answer.data(), O_CLOEXEC) != 0) {
    const int reason = errno;
    for (const int end : ends) static_cast<void>(::close(end));
    refuseStart(reason);
  }
  watcher_ = ::fork();
  const int reason = errno;
  if (watcher_ == 0) {
    static_cast<void>(::close(ends[1]));
    watch(ends[0], answer[1], pipe, socketOf(pipe));
  }
  static_cast<void>(::close(ends[0]));
  static_cast<void>(::close(answer[1]));
  lifeline_ = ends[1];
  std::string folder;
  std::array<char, 256> part{};
  for (ssize_t count = 0; watcher_ > 0 && (count = ::read(answer[0], part.data(), part.size())) != 0;) {
    if (count > 0) folder.append(part.data(), static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) break;
  }
  static_cast<void>(::close(answer[0]));
  folder_ = folder;
  if (!folder.empty()) return;
  static_cast<void>(::close(lifeline_));
  if (watcher_ < 0) refuseStart(reason);
  static_cast<void>(::waitpid(watcher_, nullptr, 0));
  refuse("There is no room for LibreOffice's files in " + std::filesystem::temp_directory_path().string() + ".");
}

OfficeProcess::~OfficeProcess() {
  static_cast<void>(::close(lifeline_));
  if (watcher_ > 0) static_cast<void>(::waitpid(watcher_, nullptr, 0));
}

bool OfficeProcess::hasEnded() {
  if (watcher_ <= 0) return true;
  if (::waitpid(watcher_, nullptr, WNOHANG) == 0) return false;
  watcher_ = -1;
  return true;
}

}  // namespace mervane::calc
