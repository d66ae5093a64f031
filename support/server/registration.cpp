#include "support/server/registration.h"

// The component model's header needs the platform's, which the own header
// brings.
#include <olectl.h>
#include <wrl/client.h>

#include <optional>
#include <string>

#include "support/server/server_ids.h"
#include "support/server/type_library.h"

using Microsoft::WRL::ComPtr;

// The cross compiler's headers leave these two out; its import library has
// them.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpFolder);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale, SYSKIND kind);

namespace mervane::server {
namespace {

constexpr bool isWide = sizeof(void*) == 8;
constexpr const wchar_t* ownPlatform = isWide ? L"win64" : L"win32";
constexpr const wchar_t* otherPlatform = isWide ? L"win32" : L"win64";
/// The classes of the other width have a view of their own; names of classes
/// and type libraries are shared by both.
constexpr REGSAM otherView = isWide ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

std::wstring textOf(const GUID& id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, 40);
  return text;
}

std::wstring classPath(const RegisteredClass& entry) {
  return L"CLSID\\" + textOf(entry.id);
}

std::wstring libraryPath() {
  return L"TypeLib\\" + textOf(libraryId) + L"\\2.1";
}

/// The classes of the machine or of the present user.
class Classes {
 public:
  explicit Classes(HKEY root) : root_(root) {}
  [[nodiscard]] bool areTheMachines() const noexcept { return root_ == HKEY_LOCAL_MACHINE; }

  bool write(const std::wstring& path, const wchar_t* name, const std::wstring& value) const {
    HKEY key = nullptr;
    if (RegCreateKeyExW(root_, whole(path).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) !=
        ERROR_SUCCESS) {
      return false;
    }
    const LSTATUS status = RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
    return status == ERROR_SUCCESS;
  }

  /// The value without a name of a key. An empty text where there is none,
  /// nothing where it cannot be asked for.
  [[nodiscard]] std::optional<std::wstring> read(const std::wstring& path, REGSAM view = 0) const {
    HKEY key = nullptr;
    LSTATUS status = RegOpenKeyExW(root_, whole(path).c_str(), 0, KEY_READ | view, &key);
    std::wstring text;
    if (status == ERROR_SUCCESS) {
      DWORD bytes = 0;
      status = RegGetValueW(key, nullptr, nullptr, RRF_RT_REG_SZ, nullptr, nullptr, &bytes);
      text.resize(bytes / sizeof(wchar_t) + 1);
      bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
      if (status == ERROR_SUCCESS) {
        status = RegGetValueW(key, nullptr, nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
      }
      RegCloseKey(key);
    }
    if (status == ERROR_FILE_NOT_FOUND) return std::wstring();
    if (status != ERROR_SUCCESS) return std::nullopt;
    text.resize(wcsnlen(text.data(), text.size()));
    return text;
  }

  /// True where nothing of it is left.
  [[nodiscard]] bool remove(const std::wstring& path) const {
    const LSTATUS status = RegDeleteTreeW(root_, whole(path).c_str());
    if (status == ERROR_SUCCESS) RegDeleteKeyW(root_, whole(path).c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
  }

 private:
  static std::wstring whole(const std::wstring& path) { return L"Software\\Classes\\" + path; }

  HKEY root_;
};

std::optional<BY_HANDLE_FILE_INFORMATION> identityOf(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return std::nullopt;
  BY_HANDLE_FILE_INFORMATION identity{};
  const bool known = GetFileInformationByHandle(file, &identity) != FALSE;
  CloseHandle(file);
  return known ? std::optional(identity) : std::nullopt;
}

/// Whether a registered path leads to this library: paths may be written in
/// more than one way.
bool isThisFile(const std::wstring& path) {
  if (path.empty()) return false;
  const std::wstring own = modulePath();
  if (CompareStringOrdinal(path.c_str(), -1, own.c_str(), -1, TRUE) == CSTR_EQUAL) return true;
  const auto one = identityOf(path);
  const auto other = identityOf(own);
  return one && other && one->dwVolumeSerialNumber == other->dwVolumeSerialNumber &&
         one->nFileIndexHigh == other->nFileIndexHigh && one->nFileIndexLow == other->nFileIndexLow;
}

bool writeClass(const Classes& classes, const RegisteredClass& entry) {
  const std::wstring path = classPath(entry);
  bool good = classes.write(path, nullptr, entry.description) &&
              classes.write(path + L"\\InprocServer32", nullptr, modulePath()) &&
              classes.write(path + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
              classes.write(path + L"\\ProgID", nullptr, entry.name) &&
              classes.write(path + L"\\Programmable", nullptr, L"") &&
              classes.write(entry.name, nullptr, entry.description) &&
              classes.write(std::wstring(entry.name) + L"\\CLSID", nullptr, textOf(entry.id));
  if (entry.hasTypeLibrary) {
    good = good && classes.write(path + L"\\TypeLib", nullptr, textOf(libraryId)) &&
           classes.write(path + L"\\VERSION", nullptr, L"1.1");
  }
  return good;
}

HRESULT registerLibrary(const Classes& classes) {
  ComPtr<ITypeLib> library;
  const HRESULT loaded = loadTypeLibrary(&library);
  if (FAILED(loaded)) return loaded;
  std::wstring path = modulePath();
  return classes.areTheMachines() ? RegisterTypeLib(library.Get(), path.data(), nullptr)
                                  : RegisterTypeLibForUser(library.Get(), path.data(), nullptr);
}

/// Removes the type library where it is this file's. The interfaces serve both
/// widths and go with the last of them.
bool unregisterLibrary(const Classes& classes) {
  const std::wstring own = libraryPath() + L"\\409\\" + ownPlatform;
  const std::optional<std::wstring> file = classes.read(own);
  if (!file) return false;
  if (!isThisFile(*file)) return true;
  const std::optional<std::wstring> other = classes.read(libraryPath() + L"\\409\\" + otherPlatform);
  if (other && !other->empty()) return classes.remove(own);
  const SYSKIND kind = isWide ? SYS_WIN64 : SYS_WIN32;
  return SUCCEEDED(classes.areTheMachines()
                       ? UnRegisterTypeLib(libraryId, libraryMajor, libraryMinor, 0x409, kind)
                       : UnRegisterTypeLibForUser(libraryId, libraryMajor, libraryMinor, 0x409, kind));
}

bool unregisterClassIn(const Classes& classes, const RegisteredClass& entry) {
  const std::wstring path = classPath(entry);
  const std::optional<std::wstring> file = classes.read(path + L"\\InprocServer32");
  if (!file) return false;
  // Another folder's registration is not ours to remove.
  if (isThisFile(*file) && !classes.remove(path)) return false;
  const bool stands = !classes.read(path + L"\\InprocServer32").value_or(L"?").empty() ||
                      !classes.read(path + L"\\InprocServer32", otherView).value_or(L"?").empty();
  // The name leads to the class of either width.
  return stands || !isThisFile(*file) || classes.remove(entry.name);
}

bool mayWriteMachine() {
  HKEY key = nullptr;
  const LSTATUS status = RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID", 0, nullptr, 0, KEY_WRITE,
                                         nullptr, &key, nullptr);
  if (status == ERROR_SUCCESS) RegCloseKey(key);
  return status == ERROR_SUCCESS;
}

/// Whether another maker's library serves this class. An entry that leads to no
/// file serves nobody.
bool isServedByOthers(const RegisteredClass& entry) {
  for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
    const Classes classes(root);
    const std::wstring file = classes.read(classPath(entry) + L"\\InprocServer32").value_or(L"");
    const std::wstring name = classes.read(classPath(entry) + L"\\ProgID").value_or(L"");
    if (!file.empty() && name != entry.name && !isThisFile(file) && identityOf(file)) return true;
  }
  return false;
}

}  // namespace

HRESULT registerClass(const RegisteredClass& entry) {
  if (entry.yieldsToOthers && isServedByOthers(entry)) return S_FALSE;
  const Classes classes(mayWriteMachine() ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER);
  if (!writeClass(classes, entry)) return SELFREG_E_CLASS;
  if (entry.hasTypeLibrary && FAILED(registerLibrary(classes))) return SELFREG_E_TYPELIB;
  return S_OK;
}

HRESULT unregisterClass(const RegisteredClass& entry) {
  bool libraryGone = true;
  bool classGone = true;
  for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
    const Classes classes(root);
    if (entry.hasTypeLibrary) libraryGone = unregisterLibrary(classes) && libraryGone;
    classGone = unregisterClassIn(classes, entry) && classGone;
  }
  if (!classGone) return SELFREG_E_CLASS;
  return libraryGone ? S_OK : SELFREG_E_TYPELIB;
}

}  // namespace mervane::server
