#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace mervane::cli {

/// How a run of the program ended and what it said.
struct Outcome {
  int status = -1;  ///< exit status; -1 where a signal ended it
  int signal = 0;   ///< the signal that ended it
  std::string out;
  std::string err;
};

/// What the program is started with.
struct Start {
  std::vector<std::string> arguments;
  std::string input;                                             ///< standard input
  std::string outPath;                                           ///< a file that takes standard output; empty: a pipe
  bool closeOutput = false;                                      ///< standard output is a pipe whose reader has gone
  bool onTerminal = false;                                       ///< standard input and error are one terminal
  bool errOnTerminal = false;                                    ///< standard error is a terminal of 100 columns
  std::vector<std::pair<std::string, std::string>> environment;  ///< added to a fixed one
  std::filesystem::path folder;                                  ///< where it runs; empty: here
  std::function<void()> inChild;                                 ///< runs before the program begins
};

/// The built program as a process of its own.
class ProgramRun {
 public:
  explicit ProgramRun(const Start& start);
  ~ProgramRun();
  ProgramRun(const ProgramRun&) = delete;
  ProgramRun& operator=(const ProgramRun&) = delete;

  [[nodiscard]] pid_t process() const noexcept { return process_; }
  void send(int signal) const;
  /// Reads on until standard error holds the text; false where the program ends first or a minute has passed.
  [[nodiscard]] bool waitForError(const std::string& text);
  /// What a person types on the terminal.
  void type(const std::string& text) const;
  /// Reads to the end and takes the status. After a minute the program is killed, and the signal tells.
  [[nodiscard]] Outcome finish();

 private:
  bool pump(std::chrono::steady_clock::time_point until);

  pid_t process_ = -1;
  int out_ = -1;
  int err_ = -1;
  Outcome outcome_;
};

/// One whole run.
[[nodiscard]] Outcome runProgram(const Start& start);
/// One whole run with these arguments and this standard input.
[[nodiscard]] Outcome runProgram(const std::vector<std::string>& arguments, const std::string& input = {});

/// A folder that is gone when the test is over.
class TestFolder {
 public:
  TestFolder();
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
  [[nodiscard]] std::string file(const std::string& name) const { return (path_ / name).string(); }
  void put(const std::string& name, const std::string& text) const;
  [[nodiscard]] std::string get(const std::string& name) const;
  /// Names of all entries, sorted.
  [[nodiscard]] std::vector<std::string> entries() const;

 private:
  std::filesystem::path path_;
};

/// "1\n2\n..." to the number given.
[[nodiscard]] std::string countTo(int number);

}  // namespace mervane::cli
