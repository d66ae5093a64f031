#include <windows.h>

#include <thread>

#include "platform/windows/option_window.h"
#include "tests/conformance_windows/option_window_conformance.h"
#include "tests/windows_server/window_user.h"

// The window of standard controls, used through its controls as a person at the screen uses it.

namespace mervane::tests {
namespace {

/// Runs the script of a showing on the thread that shows, from within its message loop.
class NativeUser final : public OptionWindowUser {
 public:
  std::unique_ptr<platform::OptionWindow> makeWindow() override { return windows::createOptionWindow(); }

  void atNextShowing(std::function<void()> script) override {
    if (closing_ != 0) KillTimer(nullptr, closing_);
    closing_ = 0;
    script_ = std::move(script);
    showing_ = this;
    SetTimer(nullptr, 0, 20, &onTimer);
  }

  void edit(const std::string& key, const std::string& text) override {
    const HWND field = control(key);
    SetFocus(field);
    SendMessageW(field, EM_SETSEL, 0, -1);
    for (const char letter : text) SendMessageW(field, WM_CHAR, static_cast<WPARAM>(letter), 0);
    if (text.empty()) SendMessageW(field, WM_KEYDOWN, VK_DELETE, 0);
    SetFocus(GetNextDlgTabItem(window(), field, FALSE));
    settle();
  }
  void choose(const std::string& key, const std::string& caption) override {
    const HWND field = control(key);
    SetFocus(field);
    const std::wstring wide(caption.begin(), caption.end());
    SendMessageW(field, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(wide.c_str()));
    SendMessageW(GetParent(field), WM_COMMAND,
                 MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(field)), static_cast<WORD>(CBN_SELCHANGE)),
                 reinterpret_cast<LPARAM>(field));
    settle();
  }
  void browse(const std::string& key) override { pressAndSettle(GetWindow(control(key), GW_HWNDNEXT)); }
  void click(const std::string& key) override { pressAndSettle(control(key)); }
  void press(const std::string& buttonKey) override {
    pressAndSettle(buttonOf(window(), buttonKey == "CLASSIFY" ? L"Clusterize" : L"Close"));
  }
  void dragWidth(float twips) override {
    RECT place{};
    GetWindowRect(window(), &place);
    const HDC screen = GetDC(nullptr);
    const int pixels = static_cast<int>(twips * static_cast<float>(GetDeviceCaps(screen, LOGPIXELSX)) / 1440.0F);
    ReleaseDC(nullptr, screen);
    SetWindowPos(window(), nullptr, 0, 0, pixels, place.bottom - place.top, SWP_NOMOVE | SWP_NOZORDER);
    settle();
  }
  void pressCloseBox() override {
    PostMessageW(window(), WM_SYSCOMMAND, SC_CLOSE, 0);
    settle();
  }

  std::string shownText(const std::string& key) override {
    const std::wstring wide = textOfControl(control(key));
    return {wide.begin(), wide.end()};
  }
  bool shownChecked(const std::string& key) override {
    return SendMessageW(control(key), BM_GETCHECK, 0, 0) == BST_CHECKED;
  }
  bool shownAtAll(const std::string& key) override { return IsWindowVisible(control(key)) != FALSE; }

 private:
  static void CALLBACK onTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    NativeUser* user = showing_;
    if (user == nullptr || window() == nullptr) return;  // The window is not up yet.
    KillTimer(nullptr, timer);
    showing_ = nullptr;
    user->script_();
    // It comes only where the showing goes on.
    closing_ = SetTimer(nullptr, 0, 20, &closeWindow);
  }
  static void CALLBACK closeWindow(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    if (timer == closing_) PostMessageW(window(), WM_CLOSE, 0, 0);
  }
  static HWND window() { return findWindow(L"MervaneOptionWindow"); }

  /// Controls stand in the order of the designed items, so a caption leads to the field behind it.
  static HWND control(const std::string& key) {
    static const std::pair<const char*, const wchar_t*> captions[] = {
        {"INPUTS", L"Inputs:"},
        {"OUTPUTS", L"Outputs:"},
        {"CLUSTERS", L"Clusters:"},
        {"EPOCHS", L"Epochs:"},
        {"ACTIVATIONFUNCTION", L"Activation function:"},
        {"USECONVEX", L"Use convex combination"},
        {"SCALEVALUES", L"Scale values"},
        {"DEFAULTS", L"Set default values"},
        {"OUTPUTGROUP", L"Output formatting parameters"},
        {"SPLITMULTIPLE", L"to multiple columns"},
        {"SPLITONE", L"to one column"},
        {"SETCOLORS", L"Set colors"},
    };
    const HWND list = FindWindowExW(window(), nullptr, L"MervaneOptionList", nullptr);
    for (const auto& [name, caption] : captions) {
      if (key != name) continue;
      const HWND found = buttonOf(list, caption);
      return std::wstring(caption).back() == L':' ? GetWindow(found, GW_HWNDNEXT) : found;
    }
    ADD_FAILURE() << "the user does not know " << key;
    return nullptr;
  }

  static void pressAndSettle(HWND button) {
    pressButton(button);
    settle();
  }
  /// Lets the window take in what has been posted.
  static void settle() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
      if (window() != nullptr && IsDialogMessageW(window(), &message) != FALSE) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }

  static inline NativeUser* showing_ = nullptr;
  static inline UINT_PTR closing_ = 0;
  std::function<void()> script_;
};

std::unique_ptr<OptionWindowUser> makeNativeUser() {
  return std::make_unique<NativeUser>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Native, OptionWindowConformance, testing::Values(&makeNativeUser));

}  // namespace mervane::tests
