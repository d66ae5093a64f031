#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "tests/windows_server/client.h"
// The codes of registration need the platform's header first.
#include <olectl.h>

namespace mervane::tests {
namespace {

using Entries = std::map<std::wstring, std::wstring>;

constexpr const wchar_t* classKey = L"CLSID\\{B4FB371B-7FDB-485F-8DA1-EE10796AC2EE}";
constexpr const wchar_t* libraryKey = L"TypeLib\\{F908A790-9758-40C7-85D5-DB401F108A90}";

/// Every value below a key, by its path; a key without values stands for itself.
void collect(HKEY root, const std::wstring& path, Entries& entries) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  entries[path] = L"";
  for (DWORD i = 0;; ++i) {
    wchar_t name[256] = {};
    BYTE data[1024] = {};
    DWORD nameLength = 256;
    DWORD dataLength = sizeof data - sizeof(wchar_t);
    if (RegEnumValueW(key, i, name, &nameLength, nullptr, nullptr, data, &dataLength) != ERROR_SUCCESS) break;
    entries[path + L"@" + name] = reinterpret_cast<wchar_t*>(data);
  }
  for (DWORD i = 0;; ++i) {
    wchar_t name[256] = {};
    DWORD nameLength = 256;
    if (RegEnumKeyExW(key, i, name, &nameLength, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    collect(root, path.empty() ? name : path + L"\\" + name, entries);
  }
  RegCloseKey(key);
}

/// All classes of the machine and of the user.
Entries allClasses() {
  Entries entries;
  for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
    Entries found;
    collect(root, L"Software\\Classes", found);
    const std::wstring prefix = root == HKEY_LOCAL_MACHINE ? L"machine " : L"user ";
    for (const auto& [path, text] : found) entries[prefix + path] = text;
  }
  return entries;
}

/// What stands in one list and not, or otherwise, in the other.
std::vector<std::wstring> changes(const Entries& before, const Entries& after) {
  std::vector<std::wstring> result;
  for (const auto& [path, text] : after) {
    const auto old = before.find(path);
    if (old == before.end() || old->second != text) result.push_back(L"+ " + path + L" = " + text);
  }
  for (const auto& [path, text] : before) {
    if (after.count(path) == 0) result.push_back(L"- " + path + L" = " + text);
  }
  return result;
}
const std::vector<std::wstring> none;

std::wstring read(HKEY root, const std::wstring& path, const wchar_t* name = nullptr) {
  wchar_t text[512] = {};
  DWORD size = sizeof text - sizeof(wchar_t);
  const std::wstring whole = L"Software\\Classes\\" + path;
  const LSTATUS status = RegGetValueW(root, whole.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? text : L"(none)";
}

bool samePath(const std::wstring& one, const std::wstring& other) {
  return CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, one.c_str(), -1, other.c_str(), -1) == CSTR_EQUAL;
}

void expectClass(HKEY root, const std::wstring& file) {
  const std::wstring key = classKey;
  EXPECT_EQ(read(root, L"MervaneClass3.Classifier3\\CLSID"), L"{B4FB371B-7FDB-485F-8DA1-EE10796AC2EE}");
  EXPECT_TRUE(samePath(read(root, key + L"\\InprocServer32"), file));
  EXPECT_EQ(read(root, key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
  EXPECT_EQ(read(root, key + L"\\ProgID"), L"MervaneClass3.Classifier3");
  EXPECT_EQ(read(root, key + L"\\TypeLib"), L"{F908A790-9758-40C7-85D5-DB401F108A90}");
  EXPECT_EQ(read(root, key + L"\\VERSION"), L"1.1");
}

class Registration : public testing::Test {
 protected:
  Apartment apartment;
  ServerLibrary library{MERVANE_SERVER};
};

TEST_F(Registration, WritesTheClassTheLibraryAndTheInterfacesForTheMachine) {
  ASSERT_EQ(library.registerServer(), S_OK);
  expectClass(HKEY_LOCAL_MACHINE, library.path());
  EXPECT_EQ(read(HKEY_CURRENT_USER, classKey), L"(none)");
  const std::wstring version = std::wstring(libraryKey) + L"\\2.1";
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, version), L"Mervane Kelvash library");
  EXPECT_TRUE(samePath(read(HKEY_LOCAL_MACHINE, version + (sizeof(void*) == 8 ? L"\\409\\win64" : L"\\409\\win32")),
                       library.path()));
  for (const wchar_t* id : {L"{FB74062B-30F4-49F4-93E3-F6FDE8A071AF}", L"{B394FB57-D919-4EFF-B606-8B2BDA0FE922}"}) {
    EXPECT_EQ(read(HKEY_LOCAL_MACHINE, std::wstring(L"Interface\\") + id + L"\\TypeLib"),
              L"{F908A790-9758-40C7-85D5-DB401F108A90}");
  }
  EXPECT_EQ(library.unregisterServer(), S_OK);
}

TEST_F(Registration, RemovalLeavesNothingBehind) {
  const Entries before = allClasses();
  ASSERT_GT(before.size(), 100U);
  ASSERT_EQ(library.registerServer(), S_OK);
  EXPECT_EQ(library.registerServer(), S_OK);  // A second time changes nothing.
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(changes(before, allClasses()), none);
}

/// Takes the right to write for the machine away from this process while it lives.
class MachineClosed {
 public:
  MachineClosed() {
    RegCreateKeyExW(HKEY_CURRENT_USER, L"MervaneTestGone", 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                    &gone_, nullptr);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"MervaneTestGone");
    // Nothing can be made below a key that has been deleted.
    EXPECT_EQ(RegOverridePredefKey(HKEY_LOCAL_MACHINE, gone_), ERROR_SUCCESS);
  }
  ~MachineClosed() {
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(gone_);
  }
  MachineClosed(const MachineClosed&) = delete;
  MachineClosed& operator=(const MachineClosed&) = delete;

 private:
  HKEY gone_ = nullptr;
};

TEST_F(Registration, ServesThePresentUserWhereTheMachineIsClosed) {
  // A user's own classes always have this key on Windows; a new prefix makes it when it is needed.
  HKEY classes = nullptr;
  RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes\\CLSID", 0, nullptr, 0, KEY_READ, nullptr, &classes, nullptr);
  RegCloseKey(classes);
  const Entries before = allClasses();
  {
    const MachineClosed closed;
    ASSERT_EQ(library.registerServer(), S_OK);
  }
  expectClass(HKEY_CURRENT_USER, library.path());
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, classKey), L"(none)");
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(changes(before, allClasses()), none);
}

TEST_F(Registration, ARemovalThatLeavesSomethingIsAFailure) {
  ASSERT_EQ(library.registerServer(), S_OK);
  {
    const MachineClosed closed;
    EXPECT_EQ(library.unregisterServer(), SELFREG_E_CLASS);
  }
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, L"MervaneClass3.Classifier3\\CLSID"), L"{B4FB371B-7FDB-485F-8DA1-EE10796AC2EE}");
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, L"MervaneClass3.Classifier3\\CLSID"), L"(none)");
}

TEST_F(Registration, TheRegistrationToolDoesBothWays) {
  const auto tool = [&](const std::wstring& flags) {
    std::wstring command = L"regsvr32 /s " + flags + L"\"" + library.path() + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process) ==
        FALSE) {
      return static_cast<DWORD>(-1);
    }
    DWORD status = static_cast<DWORD>(-1);
    WaitForSingleObject(process.hProcess, 60000);
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status;
  };
  EXPECT_EQ(tool(L""), 0U);
  expectClass(HKEY_LOCAL_MACHINE, library.path());
  EXPECT_EQ(tool(L"/u "), 0U);
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, L"MervaneClass3.Classifier3\\CLSID"), L"(none)");
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, std::wstring(classKey) + L"\\InprocServer32"), L"(none)");
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, std::wstring(libraryKey) + L"\\2.1"), L"(none)");
}

}  // namespace
}  // namespace mervane::tests
