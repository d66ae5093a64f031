#include "platform/windows/window_tools.h"

#include <cmath>

#include "platform/com/text.h"

namespace mervane::windows {
namespace {

int screenResolution() {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi > 0 ? dpi : 96;
}

}  // namespace

Scale::Scale() : dpi_(screenResolution()) {}

int Scale::fromTwips(float twips) const {
  const double pixels = static_cast<double>(twips) * dpi_ / 1440.0;
  constexpr double limit = 32000.0;  // what the platform's own coordinates hold
  if (!(pixels > -limit)) return static_cast<int>(-limit);
  if (pixels > limit) return static_cast<int>(limit);
  return static_cast<int>(std::floor(pixels + 0.5));
}

Font::Font(const Scale& scale, bool bold, BYTE characterSet) {
  LOGFONTW described{};
  // 8.25 points are 11 pixels at 96 pixels an inch; a negative height asks for the characters' own.
  described.lfHeight = -scale.pixels(11);
  described.lfWeight = bold ? FW_BOLD : FW_NORMAL;
  described.lfCharSet = characterSet;
  described.lfQuality = CLEARTYPE_QUALITY;
  const std::wstring face = L"Tahoma";
  face.copy(described.lfFaceName, LF_FACESIZE - 1);
  font_ = CreateFontIndirectW(&described);
}

HINSTANCE thisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const wchar_t*>(&thisModule), &module);
  return module;
}

void registerWindowClass(const wchar_t* name, WNDPROC procedure, HBRUSH background) {
  WNDCLASSEXW described{};
  described.cbSize = sizeof described;
  if (GetClassInfoExW(thisModule(), name, &described) != FALSE) return;
  described = {};
  described.cbSize = sizeof described;
  described.lpfnWndProc = procedure;
  described.hInstance = thisModule();
  constexpr WORD arrow = 32512;
  described.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(arrow));
  described.hbrBackground = background;
  described.lpszClassName = name;
  RegisterClassExW(&described);
}

void* objectOf(HWND window, UINT message, LPARAM data) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(data);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  return reinterpret_cast<void*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

ModalShowing::ModalShowing(HWND window) : window_(window), owner_(GetActiveWindow()) {
  if (owner_ == window_) owner_ = nullptr;
  if (owner_ != nullptr) {
    owner_ = GetAncestor(owner_, GA_ROOT);
    EnableWindow(owner_, FALSE);
  }
  ShowWindow(window_, SW_SHOW);
  SetForegroundWindow(window_);
}

ModalShowing::~ModalShowing() {
  // The owner must be usable before the window goes, else another program's window becomes the active one.
  if (owner_ != nullptr) EnableWindow(owner_, TRUE);
  ShowWindow(window_, SW_HIDE);
  if (owner_ != nullptr) SetForegroundWindow(owner_);
}

void ModalShowing::run(const bool& ended) {
  MSG message{};
  while (!ended) {
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));  // left for the loop outside
    if (got <= 0) return;
    if (IsDialogMessageW(window_, &message) != FALSE) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void ModalShowing::end(HWND window, bool& ended) {
  ended = true;
  PostMessageW(window, WM_NULL, 0, 0);
}

void moveFocus(HWND window, WPARAM word, LPARAM data) {
  const bool named = LOWORD(data) != 0;
  const HWND control =
      named ? reinterpret_cast<HWND>(word) : GetNextDlgTabItem(window, GetFocus(), word != 0 ? TRUE : FALSE);
  if (control == nullptr) return;
  SetFocus(control);
  if ((SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0) SendMessageW(control, EM_SETSEL, 0, -1);
}

std::string textOf(HWND control) {
  const int length = GetWindowTextLengthW(control);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(control, text.data(), length + 1)));
  return com::fromWide(text);
}

void setText(HWND control, const std::string& text) {
  if (textOf(control) != text) SetWindowTextW(control, com::toWide(text).c_str());
}

}  // namespace mervane::windows
