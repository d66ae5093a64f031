#pragma once

#include <windows.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// Plays the user of real windows from a thread of its own.
namespace mervane::tests {

/// A visible window of this process with a class name, or null.
[[nodiscard]] HWND findWindow(const wchar_t* className);
/// The same, waiting up to ten seconds for it.
[[nodiscard]] HWND waitForWindow(const wchar_t* className);
/// Text of a control of any thread.
[[nodiscard]] std::wstring textOfControl(HWND control);
/// A button below a window by its caption, which has no mnemonic mark; null where there is none.
[[nodiscard]] HWND buttonOf(HWND window, const std::wstring& caption);

/// Clicks into the middle of a button; comes back at once.
void pressButton(HWND button);

/// Answers every failure report that comes up while it lives.
class ReportReader {
 public:
  struct Report {
    DWORD thread;
    std::wstring text;
  };
  /// @param answer caption of the button that it presses.
  explicit ReportReader(std::wstring answer);
  ~ReportReader();
  ReportReader(const ReportReader&) = delete;
  ReportReader& operator=(const ReportReader&) = delete;
  [[nodiscard]] std::vector<Report> reports();

 private:
  void read();

  std::wstring answer_;
  std::atomic<bool> ended_{false};
  std::mutex guard_;
  std::vector<Report> reports_;
  std::thread thread_;
};

}  // namespace mervane::tests
