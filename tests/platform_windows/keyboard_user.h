#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

/// Plays somebody who uses a window by the keyboard, and by the mouse where that is another thing, from a thread of his
/// own, so that every key goes through the window's own message loop.
namespace mervane::tests {

/// Does something with the next window of a class that comes up, and closes the window where that leaves it open.
class KeyboardUser {
 public:
  KeyboardUser(const wchar_t* className, std::function<void(KeyboardUser&)> script);
  ~KeyboardUser() { thread_.join(); }
  KeyboardUser(const KeyboardUser&) = delete;
  KeyboardUser& operator=(const KeyboardUser&) = delete;

  [[nodiscard]] HWND window() const { return window_; }
  /// The control that has the keyboard; null where the window is gone.
  [[nodiscard]] HWND focus() const;
  /// Presses a key and waits until the window has taken it in.
  void press(WORD key);
  void type(const std::wstring& text);
  /// Presses and lets go the left mouse button in the middle of a control, and waits before and behind the letting go.
  void click(HWND control);
  /// The same without waiting in between.
  void clickFast(HWND control);
  /// Presses Alt with the letter that is marked in a control's text, as the control's own message would come.
  void alt(HWND control);
  /// What a screen reader is to call a control: the text of a button, else that of the caption before it.
  [[nodiscard]] std::wstring name(HWND control) const;
  /// The names that the focus goes through from where it is, until it is there again.
  [[nodiscard]] std::vector<std::wstring> tabStops();
  [[nodiscard]] bool isOpen() const { return IsWindowVisible(window_) != FALSE; }

 private:
  void settle() const;

  HWND window_ = nullptr;
  std::thread thread_;
};

/// The marked letter of a control's text in lower case, or 0.
[[nodiscard]] wchar_t markedLetter(HWND control);
/// All visible controls of a window and its list, in their order.
[[nodiscard]] std::vector<HWND> controlsOf(HWND window);
/// A visible control by its text without the mark; null where there is none.
[[nodiscard]] HWND controlNamed(HWND window, const std::wstring& text);
/// What the platform tells a screen reader of a control.
[[nodiscard]] std::wstring accessibleName(HWND control);

}  // namespace mervane::tests
