#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/windows_server/client.h"

namespace mervane::tests {
namespace {

/// What a script prints, line by line.
std::vector<std::string> linesOf(std::string command) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  EXPECT_NE(CreatePipe(&reading, &writing, &inherited, 0), FALSE);
  STARTUPINFOA start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = writing;
  start.hStdError = writing;
  PROCESS_INFORMATION process{};
  const BOOL started =
      CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process);
  CloseHandle(writing);
  EXPECT_NE(started, FALSE) << command;
  std::string output;
  char buffer[512];
  for (DWORD got = 0; ReadFile(reading, buffer, sizeof buffer, &got, nullptr) != FALSE && got > 0;) {
    output.append(buffer, got);
  }
  CloseHandle(reading);
  WaitForSingleObject(process.hProcess, 10000);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  std::vector<std::string> lines(1);
  for (const char letter : output) {
    if (letter == '\n') {
      lines.emplace_back();
    } else if (letter != '\r') {
      lines.back() += letter;
    }
  }
  if (lines.back().empty()) lines.pop_back();
  return lines;
}

TEST(Script, SetsReadsRunsAndSeesErrors) {
  // A path that begins with a slash would be taken for a flag.
  char script[MAX_PATH] = {};
  GetFullPathNameA(MERVANE_SOURCE_DIR "/tests/windows_server/script_client.vbs", MAX_PATH, script, nullptr);
  const std::vector<std::string> lines = linesOf("cscript.exe //nologo \"" + std::string(script) + "\"");
  ASSERT_EQ(lines.size(), 11U) << ::testing::PrintToString(lines);
  EXPECT_EQ(lines[0], "clusters 3 convex -1 function 3");
  EXPECT_EQ(lines[1], "set 2 4 0 Sheet1!B2:C10");
  EXPECT_EQ(lines[2], "variables 2 -1 Sheet1!B2:C10 Sheet1!E2");
  EXPECT_EQ(lines[3], "refused -2147203703 Invalid argument MervaneCls31.Classifier3");
  EXPECT_EQ(lines[4], "unknown 438");
  EXPECT_EQ(lines[5], "rate 1");
  EXPECT_EQ(lines[6], "rows 6 columns 2 largest 50");
  EXPECT_EQ(lines[7], "outputs 8195");
  EXPECT_EQ(lines[8], "strange clusters 0 3 -1");
  EXPECT_EQ(lines[9], "scaled 50");
  EXPECT_EQ(lines[10], "end of script");
}

}  // namespace
}  // namespace mervane::tests
