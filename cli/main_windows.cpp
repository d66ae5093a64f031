#include <objbase.h>
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "cli/program.h"
#include "cli/terminal.h"
#include "platform/com/text.h"

namespace {

/// The console shows UTF-8 and obeys the codes of colours for as long as this lives; then it is as it was.
class ConsoleOfUtf8 {
 public:
  ConsoleOfUtf8() : codePage_(GetConsoleOutputCP()) {
    SetConsoleOutputCP(CP_UTF8);
    if (GetConsoleMode(errors_, &mode_) == FALSE) return;
    hasMode_ = true;
    SetConsoleMode(errors_, mode_ | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  }
  ~ConsoleOfUtf8() {
    if (hasMode_) SetConsoleMode(errors_, mode_);
    if (codePage_ != 0) SetConsoleOutputCP(codePage_);
  }
  ConsoleOfUtf8(const ConsoleOfUtf8&) = delete;
  ConsoleOfUtf8& operator=(const ConsoleOfUtf8&) = delete;

 private:
  HANDLE errors_ = GetStdHandle(STD_ERROR_HANDLE);
  UINT codePage_;
  DWORD mode_ = 0;
  bool hasMode_ = false;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
  std::vector<std::string> texts;
  for (int i = 1; i < count; ++i) texts.push_back(mervane::com::fromWide(arguments[i]));
  const ConsoleOfUtf8 console;
  // The same bytes as on every machine.
  mervane::cli::terminal::useBinary(stderr);
  // The platform's regular expressions are an object of the component model.
  const bool hasComponents = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  const int status = static_cast<int>(mervane::cli::runProgram(texts));
  if (hasComponents) CoUninitialize();
  return status;
}
