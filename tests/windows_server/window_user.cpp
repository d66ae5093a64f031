#include "tests/windows_server/window_user.h"

namespace mervane::tests {
namespace {

struct Search {
  const wchar_t* className;
  std::vector<HWND> found;
};

BOOL CALLBACK matchClass(HWND window, LPARAM data) {
  auto* search = reinterpret_cast<Search*>(data);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  if (process == GetCurrentProcessId() && IsWindowVisible(window) != FALSE && std::wstring(name) == search->className) {
    search->found.push_back(window);
  }
  return TRUE;
}

std::vector<HWND> findWindows(const wchar_t* className) {
  Search search{className, {}};
  EnumWindows(&matchClass, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace

HWND findWindow(const wchar_t* className) {
  const std::vector<HWND> found = findWindows(className);
  return found.empty() ? nullptr : found.front();
}

HWND waitForWindow(const wchar_t* className) {
  for (int i = 0; i < 1000; ++i) {
    if (const HWND window = findWindow(className)) return window;
    Sleep(10);
  }
  return nullptr;
}

std::wstring textOfControl(HWND control) {
  const auto length = static_cast<std::size_t>(SendMessageW(control, WM_GETTEXTLENGTH, 0, 0));
  std::wstring text(length + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      SendMessageW(control, WM_GETTEXT, static_cast<WPARAM>(text.size()), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

HWND buttonOf(HWND window, const std::wstring& caption) {
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    std::wstring text = textOfControl(child);
    std::erase(text, L'&');
    if (text == caption) return child;
  }
  return nullptr;
}

void pressButton(HWND button) {
  RECT area{};
  GetClientRect(button, &area);
  const LPARAM middle = MAKELPARAM(area.right / 2, area.bottom / 2);
  PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, middle);
  PostMessageW(button, WM_LBUTTONUP, 0, middle);
}

ReportReader::ReportReader(std::wstring answer) : answer_(std::move(answer)), thread_([this] { read(); }) {}

ReportReader::~ReportReader() {
  ended_ = true;
  thread_.join();
}

std::vector<ReportReader::Report> ReportReader::reports() {
  const std::lock_guard lock(guard_);
  return reports_;
}

void ReportReader::read() {
  while (!ended_) {
    for (const HWND window : findWindows(L"MervaneErrorWindow")) {
      const HWND button = buttonOf(window, answer_);
      if (button == nullptr) continue;
      const HWND field = FindWindowExW(window, nullptr, L"EDIT", nullptr);
      {
        const std::lock_guard lock(guard_);
        reports_.push_back({GetWindowThreadProcessId(window, nullptr), textOfControl(field)});
      }
      pressButton(button);
      for (int i = 0; i < 1000 && IsWindowVisible(window) != FALSE; ++i) Sleep(2);
    }
    Sleep(5);
  }
}

}  // namespace mervane::tests
