#include "platform/windows/machine.h"

#include <windows.h>
// The headers of the shell and the browser object need the platform's first.
#include <exdisp.h>
#include <shellapi.h>
#include <wrl/client.h>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "platform/com/code_page.h"
#include "platform/com/failure_conversion.h"
#include "platform/com/text.h"

using Microsoft::WRL::ComPtr;

namespace mervane::windows {
namespace {

[[noreturn]] void raiseLastError() {
  throw com::failureOf(HRESULT_FROM_WIN32(GetLastError()), nullptr, IID_NULL);
}

/// A file that closes itself.
class File {
 public:
  explicit File(HANDLE handle) : handle_(handle) {
    if (handle_ == INVALID_HANDLE_VALUE) raiseLastError();
  }
  ~File() { CloseHandle(handle_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  [[nodiscard]] HANDLE get() const noexcept { return handle_; }

 private:
  HANDLE handle_;
};

/// {0002DF01-0000-0000-C000-000000000046}: the browser object.
constexpr CLSID browserClass = {0x0002DF01, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

bool openInBrowser(const std::string& url) {
  ComPtr<IWebBrowser2> browser;
  if (FAILED(CoCreateInstance(browserClass, nullptr, CLSCTX_SERVER, IID_PPV_ARGS(&browser)))) return false;
  VARIANT target;
  VariantInit(&target);
  target.bstrVal = com::newBstr(url);
  target.vt = VT_BSTR;
  const HRESULT result = browser->Navigate2(&target, nullptr, nullptr, nullptr, nullptr);
  VariantClear(&target);
  return SUCCEEDED(result);
}

}  // namespace

Date Clock::now() {
  SYSTEMTIME time{};
  GetLocalTime(&time);
  double serial = 0.0;
  if (SystemTimeToVariantTime(&time, &serial) == FALSE) raise(runtime::overflow);
  return Date{serial};
}

void EventLog::write(const std::string& text, std::int32_t type) {
  const HANDLE log = RegisterEventSourceW(nullptr, L"MervaneClass");
  if (log == nullptr) raiseLastError();
  const std::wstring wide = com::toWide(text);
  const wchar_t* strings[] = {wide.c_str()};
  const BOOL written = ReportEventW(log, static_cast<WORD>(type), 0, 1, nullptr, 1, 0, strings, nullptr);
  const DWORD error = GetLastError();
  DeregisterEventSource(log);
  if (written == FALSE) throw com::failureOf(HRESULT_FROM_WIN32(error), nullptr, IID_NULL);
}

void Mail::open(const std::string& url) {
  if (openInBrowser(url)) return;
  const auto result = reinterpret_cast<std::intptr_t>(
      ShellExecuteW(nullptr, L"open", com::toWide(url).c_str(), nullptr, nullptr, SW_SHOWNORMAL));
  if (result <= 32) raise(runtime::fileNotFound);
}

MessageDialog::Answer MessageDialog::show(const std::string& text, Buttons buttons) {
  const UINT kind =
      (buttons == Buttons::ok ? MB_OK : MB_ABORTRETRYIGNORE | MB_ICONERROR) | MB_TASKMODAL | MB_SETFOREGROUND;
  // No title is given: the box takes the platform's default caption.
  switch (MessageBoxW(GetActiveWindow(), com::toWide(text).c_str(), nullptr, kind)) {
    case IDABORT:
      return Answer::abort;
    case IDRETRY:
      return Answer::retry;
    case IDOK:
      return buttons == Buttons::ok ? Answer::ok : Answer::ignore;
    default:
      return buttons == Buttons::ok ? Answer::ok : Answer::ignore;
  }
}

void Screen::pointer(std::int32_t shape) {
  constexpr WORD arrow = 32512;
  constexpr WORD hourglass = 32514;
  SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(shape == pointerHourglass ? hourglass : arrow)));
}

void Screen::beep() {
  MessageBeep(MB_OK);
}

std::optional<std::int32_t> SystemVersion::platformId(std::int32_t recordSize) {
  OSVERSIONINFOEXA record{};
  record.dwOSVersionInfoSize = static_cast<DWORD>(recordSize);
  if (static_cast<std::size_t>(recordSize) > sizeof record) return std::nullopt;
  if (GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&record)) == FALSE) return std::nullopt;
  return static_cast<std::int32_t>(record.dwPlatformId);
}

void TextFiles::append(const std::string& path, const std::string& text) {
  const File file(CreateFileW(com::toWide(path).c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
  const std::string bytes = com::toCodePage(text);
  DWORD written = 0;
  const BOOL good = WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  if (good == FALSE || written != bytes.size()) raiseLastError();
}

void TextFiles::remove(const std::string& path) {
  if (DeleteFileW(com::toWide(path).c_str()) == FALSE) raiseLastError();
}

}  // namespace mervane::windows
