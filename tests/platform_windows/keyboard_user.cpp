#include "tests/platform_windows/keyboard_user.h"

#include <gtest/gtest.h>
#include <oleacc.h>

#include <cwctype>

#include "tests/windows_server/window_user.h"

namespace mervane::tests {
namespace {

BOOL CALLBACK collect(HWND control, LPARAM data) {
  if (IsWindowVisible(control) != FALSE) reinterpret_cast<std::vector<HWND>*>(data)->push_back(control);
  return TRUE;
}

std::wstring withoutMark(std::wstring text) {
  std::erase(text, L'&');
  return text;
}

}  // namespace

KeyboardUser::KeyboardUser(const wchar_t* className, std::function<void(KeyboardUser&)> script)
    : thread_([this, className, script = std::move(script)] {
        window_ = waitForWindow(className);
        if (window_ == nullptr) {
          ADD_FAILURE() << "no window comes up";
          return;
        }
        for (int i = 0; i < 500 && focus() == nullptr; ++i) Sleep(2);
        settle();
        script(*this);
        for (int i = 0; i < 20 && isOpen(); ++i) Sleep(5);
        if (isOpen()) PostMessageW(window_, WM_CLOSE, 0, 0);
      }) {}

HWND KeyboardUser::focus() const {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  if (GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info) == FALSE) return nullptr;
  return info.hwndFocus;
}

void KeyboardUser::settle() const {
  // A thread answers a message that is sent between two that are posted, so one answer tells only that it is at work. A
  // window that has gone has nobody who answers.
  for (int answers = 0, tries = 0; answers < 3 && tries < 100 && isOpen(); ++tries) {
    if (SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_NORMAL, 20, nullptr) != 0) ++answers;
    Sleep(4);
  }
}

void KeyboardUser::press(WORD key) {
  const HWND target = focus();
  PostMessageW(target, WM_KEYDOWN, key, 1);
  PostMessageW(target, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001U));
  settle();
}

void KeyboardUser::type(const std::wstring& text) {
  const HWND target = focus();
  for (const wchar_t letter : text) PostMessageW(target, WM_CHAR, letter, 1);
  settle();
}

void KeyboardUser::click(HWND control) {
  RECT area{};
  GetClientRect(control, &area);
  const LPARAM middle = MAKELPARAM(area.right / 2, area.bottom / 2);
  PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, middle);
  settle();
  PostMessageW(control, WM_LBUTTONUP, 0, middle);
  settle();
}

void KeyboardUser::clickFast(HWND control) {
  RECT area{};
  GetClientRect(control, &area);
  const LPARAM middle = MAKELPARAM(area.right / 2, area.bottom / 2);
  PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, middle);
  PostMessageW(control, WM_LBUTTONUP, 0, middle);
  settle();
}

void KeyboardUser::alt(HWND control) {
  const wchar_t letter = markedLetter(control);
  ASSERT_NE(letter, 0) << "no letter leads to " << testing::PrintToString(textOfControl(control));
  constexpr LPARAM altIsDown = 0x20000001;
  PostMessageW(focus(), WM_SYSCHAR, letter, altIsDown);
  settle();
}

std::wstring KeyboardUser::name(HWND control) const {
  wchar_t className[32] = {};
  GetClassNameW(control, className, 32);
  const bool isButton = lstrcmpiW(className, L"BUTTON") == 0;
  return withoutMark(textOfControl(isButton ? control : GetWindow(control, GW_HWNDPREV)));
}

std::vector<std::wstring> KeyboardUser::tabStops() {
  std::vector<std::wstring> names;
  const HWND first = focus();
  do {
    names.push_back(name(focus()));
    press(VK_TAB);
  } while (focus() != first && names.size() < 100);
  return names;
}

wchar_t markedLetter(HWND control) {
  const std::wstring text = textOfControl(control);
  const std::size_t at = text.find(L'&');
  if (at == std::wstring::npos || at + 1 >= text.size()) return 0;
  return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(text[at + 1])));
}

std::vector<HWND> controlsOf(HWND window) {
  std::vector<HWND> controls;
  EnumChildWindows(window, &collect, reinterpret_cast<LPARAM>(&controls));
  return controls;
}

HWND controlNamed(HWND window, const std::wstring& text) {
  for (const HWND control : controlsOf(window)) {
    if (withoutMark(textOfControl(control)) == text) return control;
  }
  return nullptr;
}

std::wstring accessibleName(HWND control) {
  const HRESULT entered = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  std::wstring name;
  IAccessible* accessible = nullptr;
  if (SUCCEEDED(CreateStdAccessibleObject(control, OBJID_CLIENT, __uuidof(IAccessible),
                                          reinterpret_cast<void**>(&accessible)))) {
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    BSTR text = nullptr;
    if (SUCCEEDED(accessible->get_accName(self, &text)) && text != nullptr) name = text;
    SysFreeString(text);
    accessible->Release();
  }
  if (SUCCEEDED(entered)) CoUninitialize();
  return name;
}

}  // namespace mervane::tests
