#include "tests/cli/program_run.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <thread>

namespace mervane::cli {
namespace {

constexpr auto patience = std::chrono::seconds(60);

struct Pipe {
  int read = -1;
  int write = -1;
};

Pipe makePipe() {
  std::array<int, 2> ends{};
  EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
  return {ends[0], ends[1]};
}

Pipe makeTerminal() {
  Pipe ends;
  const winsize size{.ws_row = 25, .ws_col = 100, .ws_xpixel = 0, .ws_ypixel = 0};
  EXPECT_EQ(::openpty(&ends.read, &ends.write, nullptr, nullptr, &size), 0);
  ::fcntl(ends.read, F_SETFD, FD_CLOEXEC);
  ::fcntl(ends.write, F_SETFD, FD_CLOEXEC);
  return ends;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> all;
  for (std::string& text : texts) all.push_back(text.data());
  all.push_back(nullptr);
  return all;
}

[[noreturn]] void becomeProgram(const Start& start, int in, int out, int err) {
  ::dup2(in, STDIN_FILENO);
  ::dup2(out, STDOUT_FILENO);
  ::dup2(err, STDERR_FILENO);
  for (const int number : {SIGINT, SIGPIPE, SIGTERM, SIGHUP}) std::signal(number, SIG_DFL);
  if (!start.folder.empty() && ::chdir(start.folder.c_str()) != 0) ::_exit(126);
  if (start.inChild) start.inChild();
  std::vector<std::string> arguments{MERVANE_PROGRAM};
  arguments.insert(arguments.end(), start.arguments.begin(), start.arguments.end());
  std::vector<std::string> environment{"PATH=/usr/bin:/bin", "TERM=xterm", "LANG=C.UTF-8"};
  for (const auto& [name, value] : start.environment) environment.push_back(name + "=" + value);
  ::execve(MERVANE_PROGRAM, pointers(arguments).data(), pointers(environment).data());
  ::_exit(127);
}

/// Takes what there is; false at the end.
bool take(int descriptor, std::string& text) {
  std::array<char, 65536> block{};
  const ssize_t count = ::read(descriptor, block.data(), block.size());
  if (count > 0) text.append(block.data(), static_cast<std::size_t>(count));
  return count > 0;  // A terminal whose other side has gone gives an error in place of an end.
}

}  // namespace

ProgramRun::ProgramRun(const Start& start) {
  const Pipe in = makePipe();
  const Pipe err = start.errOnTerminal || start.onTerminal ? makeTerminal() : makePipe();
  Pipe out;
  if (start.outPath.empty()) {
    out = makePipe();
  } else {
    out.write = ::open(start.outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  }
  if (start.closeOutput) {
    ::close(out.read);
    out.read = -1;
  }
  process_ = ::fork();
  if (process_ == 0) becomeProgram(start, start.onTerminal ? err.write : in.read, out.write, err.write);
  ::close(in.read);
  ::close(out.write);
  ::close(err.write);
  out_ = out.read;
  err_ = err.read;
  // Standard input is fed from the side, so that the program may stop reading when it likes.
  std::thread([text = start.input, descriptor = in.write] {
    sigset_t pipe;
    ::sigemptyset(&pipe);
    ::sigaddset(&pipe, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    for (std::size_t done = 0; done < text.size();) {
      const ssize_t count = ::write(descriptor, text.data() + done, text.size() - done);
      if (count <= 0) break;
      done += static_cast<std::size_t>(count);
    }
    ::close(descriptor);
  }).detach();
}

ProgramRun::~ProgramRun() {
  if (process_ > 0) {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  if (out_ >= 0) ::close(out_);
  if (err_ >= 0) ::close(err_);
}

void ProgramRun::send(int signal) const {
  EXPECT_EQ(::kill(process_, signal), 0);
}

/// Waits for some output of the program; false where both streams have ended or the time is up.
bool ProgramRun::pump(std::chrono::steady_clock::time_point until) {
  std::array<pollfd, 2> streams{{{out_, POLLIN, 0}, {err_, POLLIN, 0}}};
  if (out_ < 0 && err_ < 0) return false;
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
  if (left.count() <= 0 || ::poll(streams.data(), streams.size(), static_cast<int>(left.count())) <= 0) return false;
  if (streams[0].revents != 0 && !take(out_, outcome_.out)) {
    ::close(out_);
    out_ = -1;
  }
  if (streams[1].revents != 0 && !take(err_, outcome_.err)) {
    ::close(err_);
    err_ = -1;
  }
  return true;
}

void ProgramRun::type(const std::string& text) const {
  EXPECT_EQ(::write(err_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

bool ProgramRun::waitForError(const std::string& text) {
  const auto until = std::chrono::steady_clock::now() + patience;
  while (outcome_.err.find(text) == std::string::npos) {
    if (!pump(until)) return false;
  }
  return true;
}

Outcome ProgramRun::finish() {
  const auto until = std::chrono::steady_clock::now() + patience;
  while (pump(until)) {
  }
  if (out_ >= 0 || err_ >= 0) ::kill(process_, SIGKILL);
  int status = 0;
  EXPECT_EQ(::waitpid(process_, &status, 0), process_);
  process_ = -1;
  if (WIFEXITED(status)) outcome_.status = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) outcome_.signal = WTERMSIG(status);
  return outcome_;
}

Outcome runProgram(const Start& start) {
  return ProgramRun(start).finish();
}

Outcome runProgram(const std::vector<std::string>& arguments, const std::string& input) {
  Start start;
  start.arguments = arguments;
  start.input = input;
  return runProgram(start);
}

TestFolder::TestFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "mervane-XXXXXX").string();
  path_ = ::mkdtemp(pattern.data());
}

TestFolder::~TestFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void TestFolder::put(const std::string& name, const std::string& text) const {
  std::ofstream(file(name), std::ios::binary) << text;
}

std::string TestFolder::get(const std::string& name) const {
  std::ifstream stream(file(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> TestFolder::entries() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_))
    names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

std::string countTo(int number) {
  std::string text;
  for (int i = 1; i <= number; ++i) text += std::to_string(i) + "\n";
  return text;
}

}  // namespace mervane::cli
