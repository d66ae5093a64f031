#pragma once

#include <windows.h>

#include <string>

/// What both windows share: sizes that follow the screen's resolution, the font, and modal showing.
namespace mervane::windows {

/// Sizes of the screen that a window stands on. A twip is 1/1440 inch; designs are drawn at 96 pixels an inch.
class Scale {
 public:
  /// That of the screen.
  Scale();
  explicit Scale(int pixelsPerInch) : dpi_(pixelsPerInch) {}
  [[nodiscard]] int pixels(int designPixels) const { return MulDiv(designPixels, dpi_, 96); }
  [[nodiscard]] float twips(int pixels) const {
    return static_cast<float>(pixels) * 1440.0F / static_cast<float>(dpi_);
  }
  [[nodiscard]] int fromTwips(float twips) const;

 private:
  int dpi_;
};

/// Tahoma 8.25 in the screen's resolution; the object owns the font.
class Font {
 public:
  Font(const Scale& scale, bool bold, BYTE characterSet = DEFAULT_CHARSET);
  ~Font() { DeleteObject(font_); }
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;
  [[nodiscard]] HFONT get() const noexcept { return font_; }

 private:
  HFONT font_;
};

/// Registers a window class of this module once for the process. `procedure` gets the object from the window's data.
void registerWindowClass(const wchar_t* name, WNDPROC procedure, HBRUSH background);
[[nodiscard]] HINSTANCE thisModule();
/// For a window procedure: the object that the window was made with, which its data keeps from the first message that
/// brings it; null before.
[[nodiscard]] void* objectOf(HWND window, UINT message, LPARAM data);

/// Runs the message loop of a modal window until `ended` is true. The window that was active cannot be used meanwhile
/// and is the active one again afterwards.
class ModalShowing {
 public:
  explicit ModalShowing(HWND window);
  ~ModalShowing();
  ModalShowing(const ModalShowing&) = delete;
  ModalShowing& operator=(const ModalShowing&) = delete;
  void run(const bool& ended);
  /// Ends the run of this window, whose `ended` this is. A message that was sent, not posted, does not end the wait for
  /// the next one, so one is posted.
  static void end(HWND window, bool& ended);

 private:
  HWND window_;
  HWND owner_;
};

/// Answers WM_NEXTDLGCTL, by which the platform asks for the keyboard to go on: to the control named, or to the next or
/// the last tab stop. A field that it comes to is selected.
void moveFocus(HWND window, WPARAM word, LPARAM data);

[[nodiscard]] std::string textOf(HWND control);
void setText(HWND control, const std::string& text);

}  // namespace mervane::windows
