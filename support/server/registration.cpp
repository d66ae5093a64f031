#include "support/server/registration.h"

// The component model's header needs the platform's, which the own header brings.
#include <olectl.h>
#include <wrl/client.h>

#include <string>

#include "support/server/server_ids.h"
#include "support/server/type_library.h"

using Microsoft::WRL::ComPtr;

// The cross compiler's headers leave these two out; its import library has them.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpFolder);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale, SYSKIND kind);

namespace mervane::server {
namespace {

std::wstring textOf(const GUID& id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, 40);
  return text;
}

/// The classes of the machine or of the present user, as one root with a path.
struct ClassesRoot {
  HKEY key;
  bool machine;
};
constexpr const wchar_t* classesPath = L"Software\\Classes\\";

bool write(const ClassesRoot& root, const std::wstring& path, const wchar_t* name, const std::wstring& value) {
  HKEY key = nullptr;
  const std::wstring whole = classesPath + path;
  if (RegCreateKeyExW(root.key, whole.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const LSTATUS status = RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(key);
  return status == ERROR_SUCCESS;
}

bool writeClass(const ClassesRoot& root, const RegisteredClass& entry) {
  const std::wstring id = textOf(entry.id);
  const std::wstring path = L"CLSID\\" + id;
  bool good =
      write(root, path, nullptr, entry.description) && write(root, path + L"\\InprocServer32", nullptr, modulePath()) &&
      write(root, path + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
      write(root, path + L"\\ProgID", nullptr, entry.name) && write(root, path + L"\\Programmable", nullptr, L"") &&
      write(root, std::wstring(entry.name), nullptr, entry.description) &&
      write(root, std::wstring(entry.name) + L"\\CLSID", nullptr, id);
  if (entry.hasTypeLibrary) {
    good = good && write(root, path + L"\\TypeLib", nullptr, textOf(libraryId)) &&
           write(root, path + L"\\VERSION", nullptr, L"1.1");
  }
  return good;
}

HRESULT registerLibrary(bool machine) {
  ComPtr<ITypeLib> library;
  const HRESULT loaded = loadTypeLibrary(&library);
  if (FAILED(loaded)) return loaded;
  std::wstring path = modulePath();
  return machine ? RegisterTypeLib(library.Get(), path.data(), nullptr)
                 : RegisterTypeLibForUser(library.Get(), path.data(), nullptr);
}

void unregisterLibrary() {
  const SYSKIND kind = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
  UnRegisterTypeLib(libraryId, libraryMajor, libraryMinor, 0x409, kind);
  UnRegisterTypeLibForUser(libraryId, libraryMajor, libraryMinor, 0x409, kind);
}

bool mayWriteMachine() {
  HKEY key = nullptr;
  const LSTATUS status = RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID", 0, nullptr, 0, KEY_WRITE,
                                         nullptr, &key, nullptr);
  if (status == ERROR_SUCCESS) RegCloseKey(key);
  return status == ERROR_SUCCESS;
}

}  // namespace

HRESULT registerClass(const RegisteredClass& entry) {
  const bool machine = mayWriteMachine();
  const ClassesRoot root{machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER, machine};
  if (!writeClass(root, entry)) return SELFREG_E_CLASS;
  if (entry.hasTypeLibrary && FAILED(registerLibrary(root.machine))) return SELFREG_E_TYPELIB;
  return S_OK;
}

HRESULT unregisterClass(const RegisteredClass& entry) {
  if (entry.hasTypeLibrary) unregisterLibrary();
  bool gone = true;
  for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
    for (const std::wstring& path : {std::wstring(entry.name), L"CLSID\\" + textOf(entry.id)}) {
      const LSTATUS status = RegDeleteTreeW(root, (classesPath + path).c_str());
      if (status == ERROR_SUCCESS) RegDeleteKeyW(root, (classesPath + path).c_str());
      gone = gone && (status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND);
    }
  }
  return gone ? S_OK : SELFREG_E_CLASS;
}

}  // namespace mervane::server
