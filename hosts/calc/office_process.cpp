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

std::filesystem::path makeFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "mervane-office-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    refuse("There is no room for LibreOffice's files in " + std::filesystem::temp_directory_path().string() + ": " +
           std::strerror(errno));
  }
  return pattern;
}

/// Leaves no descriptor of this program open but one, so that nobody waits for an end that does not come.
void keepOnly(int kept) {
  const int nothing = ::open("/dev/null", O_RDWR);
  for (int one = 0; one < 3; ++one) static_cast<void>(::dup2(nothing, one));
  const long most = ::sysconf(_SC_OPEN_MAX);
  for (int one = 3; one < most && one < 4096; ++one) {
    if (one != kept) static_cast<void>(::close(one));
  }
}

pid_t startOffice(const std::vector<std::string>& command, const std::filesystem::path& folder) {
  const pid_t office = ::fork();
  if (office != 0) return office;
  // A group of its own takes in whatever the office starts.
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

/// The watcher's whole life.
[[noreturn]] void watch(int lifeline, const std::vector<std::string>& command, const std::filesystem::path& folder,
                        const std::string& socket) {
  // A Ctrl-C at the terminal is for the program alone; it tells the office by ending, or not at all.
  static_cast<void>(::setsid());
  keepOnly(lifeline);
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
  std::error_code ignored;
  // NB: what the office's dying children still write is cleared in a second round.
  for (int round = 0; round < 2; ++round) std::filesystem::remove_all(folder, ignored);
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

OfficeProcess::OfficeProcess(const std::string& pipe) : folder_(makeFolder()) {
  const std::vector<std::string> command = {
      program().string(), "-env:UserInstallation=file://" + (folder_ / "profile").string(),
      "--headless",       "--norestore",
      "--nologo",         "--nodefault",
      "--nolockcheck",    "--accept=pipe,name=" + pipe + ";urp"};
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0)
    refuse(std::string("LibreOffice cannot be watched: ") + std::strerror(errno));
  watcher_ = ::fork();
  if (watcher_ == 0) {
    static_cast<void>(::close(ends[1]));
    watch(ends[0], command, folder_, socketOf(pipe));
  }
  static_cast<void>(::close(ends[0]));
  lifeline_ = ends[1];
  if (watcher_ > 0) return;
  const int reason = errno;
  static_cast<void>(::close(lifeline_));
  refuse(std::string("LibreOffice cannot be started: ") + std::strerror(reason));
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
