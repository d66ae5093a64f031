#include "tests/windows_flow/press_button.h"

#include <algorithm>
#include <array>
#include <thread>

namespace mervane::tests {
namespace {

struct Search {
  std::wstring text;
  DWORD process = 0;
  HWND button = nullptr;
};

std::wstring captionOf(HWND window) {
  std::array<wchar_t, 256> text{};
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  std::wstring caption(text.data(), static_cast<std::size_t>(length));
  std::erase(caption, L'&');
  return caption;
}

BOOL CALLBACK lookAtChild(HWND child, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  std::array<wchar_t, 32> kind{};
  GetClassNameW(child, kind.data(), static_cast<int>(kind.size()));
  const bool fits = std::wstring(kind.data()) == L"Button" && IsWindowVisible(child) != FALSE &&
                    IsWindowEnabled(child) != FALSE && captionOf(child) == search.text;
  if (fits) search.button = child;
  return fits ? FALSE : TRUE;
}

BOOL CALLBACK lookAtWindow(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (IsWindowVisible(window) == FALSE || (search.process != 0 && process != search.process)) return TRUE;
  EnumChildWindows(window, lookAtChild, parameter);
  return search.button == nullptr ? TRUE : FALSE;
}

}  // namespace

bool pressButton(const std::wstring& text, DWORD process, std::chrono::seconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (std::chrono::steady_clock::now() < end) {
    Search search{text, process};
    EnumWindows(lookAtWindow, reinterpret_cast<LPARAM>(&search));
    if (search.button != nullptr) {
      const auto id = static_cast<WORD>(GetDlgCtrlID(search.button));
      PostMessageW(GetParent(search.button), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                   reinterpret_cast<LPARAM>(search.button));
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

}  // namespace mervane::tests
