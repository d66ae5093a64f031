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

/// Every value below a key, by its path; a key without values stands for
/// itself.
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

/// What is ours of them, which takes a small part of the time.
Entries ourClasses() {
  Entries entries;
  for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
    Entries found;
    for (const wchar_t* path :
         {classKey, libraryKey, L"CLSID\\{1981245B-7DE1-45D9-94E5-26B4F0A10C06}", L"MervaneClass3.Classifier3",
          L"MervaneEngine.NetworkEngine", L"Interface\\{FB74062B-30F4-49F4-93E3-F6FDE8A071AF}",
          L"Interface\\{B394FB57-D919-4EFF-B606-8B2BDA0FE922}", L"Interface\\{F6EBDEA3-FCE5-452B-BDC7-B09CFD8F50AC}"}) {
      collect(root, std::wstring(L"Software\\Classes\\") + path, found);
    }
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
  for (const wchar_t* id : {L"{FB74062B-30F4-49F4-93E3-F6FDE8A071AF}", L"{B394FB57-D919-4EFF-B606-8B2BDA0FE922}",
                            L"{F6EBDEA3-FCE5-452B-BDC7-B09CFD8F50AC}"}) {
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

/// Takes the right to write for the machine away from this process while it
/// lives.
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
  // A user's own classes always have this key on Windows; a new prefix makes it
  // when it is needed.
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

void write(const std::wstring& path, const wchar_t* value, REGSAM view = 0) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + path).c_str(), 0, nullptr, 0,
                            KEY_WRITE | view, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value),
                           static_cast<DWORD>((wcslen(value) + 1) * sizeof(wchar_t))),
            ERROR_SUCCESS);
  RegCloseKey(key);
}

void remove(const std::wstring& path, REGSAM view = 0) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes", 0, KEY_ALL_ACCESS | view, &key) != ERROR_SUCCESS) return;
  RegDeleteTreeW(key, path.c_str());
  RegDeleteKeyExW(key, path.c_str(), view, 0);
  RegCloseKey(key);
}

/// A second folder with the same files, as an earlier or later version has.
class OtherFolder {
 public:
  explicit OtherFolder(const wchar_t* name) {
    wchar_t place[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, place);
    folder_ = std::wstring(place) + name;
    CreateDirectoryW(folder_.c_str(), nullptr);
  }
  ~OtherFolder() {
    for (const std::wstring& file : files_) DeleteFileW(file.c_str());
    RemoveDirectoryW(folder_.c_str());
  }
  OtherFolder(const OtherFolder&) = delete;
  OtherFolder& operator=(const OtherFolder&) = delete;
  /// The path of a copy, for a library that is let go before the folder.
  std::string copyOf(const ServerLibrary& library) {
    const std::wstring path = library.path();
    files_.push_back(folder_ + path.substr(path.rfind(L'\\')));
    EXPECT_NE(CopyFileW(path.c_str(), files_.back().c_str(), FALSE), FALSE);
    return {files_.back().begin(), files_.back().end()};
  }

 private:
  std::wstring folder_;
  std::vector<std::wstring> files_;
};

TEST_F(Registration, AnOldFolderLeavesTheRegistrationOfANewerOneAlone) {
  const Entries before = ourClasses();
  OtherFolder folder(L"mervane old");
  {
    ServerLibrary old(folder.copyOf(library).c_str());
    ASSERT_EQ(old.registerServer(), S_OK);
    expectClass(HKEY_LOCAL_MACHINE, old.path());
    ASSERT_EQ(library.registerServer(), S_OK);
    const Entries registered = ourClasses();
    EXPECT_EQ(old.unregisterServer(), S_OK);
    EXPECT_EQ(changes(registered, ourClasses()), none);
    expectClass(HKEY_LOCAL_MACHINE, library.path());
  }
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(changes(before, ourClasses()), none);
}

TEST_F(Registration, APathInOtherWordsStillLeadsToThisFile) {
  const Entries before = ourClasses();
  ASSERT_EQ(library.registerServer(), S_OK);
  std::wstring path = library.path();
  path.insert(path.rfind(L'\\'), L"\\.");
  write(std::wstring(classKey) + L"\\InprocServer32", path.c_str());
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(changes(before, ourClasses()), none);
}

TEST_F(Registration, WhatBothWidthsShareStaysWhileTheOtherOneStands) {
  const Entries before = ourClasses();
  ASSERT_EQ(library.registerServer(), S_OK);
  constexpr bool isWide = sizeof(void*) == 8;
  const REGSAM view = isWide ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  const std::wstring version = std::wstring(libraryKey) + L"\\2.1";
  const std::wstring other = version + (isWide ? L"\\409\\win32" : L"\\409\\win64");
  const std::wstring own = version + (isWide ? L"\\409\\win64" : L"\\409\\win32");
  const wchar_t* const file = L"C:\\the other width\\MervaneCls31.dll";
  write(other, file);
  // A system of one width has one view, and no classes of the other.
  BOOL emulated = FALSE;
  const bool twoViews = isWide || (IsWow64Process(GetCurrentProcess(), &emulated) != FALSE && emulated != FALSE);
  const std::wstring server = std::wstring(classKey) + L"\\InprocServer32";
  if (twoViews) write(server, file, view);

  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, server), L"(none)");
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, other), file);
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, own), L"(none)");
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, version), L"Mervane Kelvash library");
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, L"Interface\\{FB74062B-30F4-49F4-93E3-F6FDE8A071AF}\\TypeLib"),
            L"{F908A790-9758-40C7-85D5-DB401F108A90}");
  const wchar_t* const id = L"{B4FB371B-7FDB-485F-8DA1-EE10796AC2EE}";
  EXPECT_EQ(read(HKEY_LOCAL_MACHINE, L"MervaneClass3.Classifier3\\CLSID"), twoViews ? id : L"(none)");

  // The last width takes all with it.
  remove(other);
  if (twoViews) remove(classKey, view);
  ASSERT_EQ(library.registerServer(), S_OK);
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(changes(before, ourClasses()), none);
}

class EngineRegistration : public testing::Test {
 protected:
  static std::wstring registered() { return read(HKEY_LOCAL_MACHINE, serverKey()); }
  static std::wstring serverKey() { return std::wstring(engineKey) + L"\\InprocServer32"; }
  static constexpr const wchar_t* engineKey = L"CLSID\\{1981245B-7DE1-45D9-94E5-26B4F0A10C06}";
  Apartment apartment;
  ServerLibrary library{MERVANE_ENGINE_SERVER};
};

TEST_F(EngineRegistration, AnotherMakersEngineIsNeitherReplacedNorRemoved) {
  const Entries before = ourClasses();
  wchar_t file[MAX_PATH] = {};
  GetSystemDirectoryW(file, MAX_PATH);
  wcscat(file, L"\\oleaut32.dll");
  write(serverKey(), file);
  write(std::wstring(engineKey) + L"\\ProgID", L"Other.Engine");
  const Entries registered = ourClasses();
  EXPECT_EQ(library.registerServer(), S_FALSE);
  EXPECT_EQ(changes(registered, ourClasses()), none);
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(changes(registered, ourClasses()), none);
  remove(engineKey);
  EXPECT_EQ(changes(before, ourClasses()), none);
}

TEST_F(EngineRegistration, AnEntryThatLeadsNowhereGivesWay) {
  const Entries before = ourClasses();
  write(serverKey(), L"C:\\gone\\engine.dll");
  write(std::wstring(engineKey) + L"\\ProgID", L"Other.Engine");
  EXPECT_EQ(library.registerServer(), S_OK);
  EXPECT_TRUE(samePath(registered(), library.path()));
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(changes(before, ourClasses()), none);
}

TEST_F(EngineRegistration, AnEarlierFolderOfOursGivesWay) {
  const Entries before = ourClasses();
  OtherFolder folder(L"mervane old engine");
  {
    ServerLibrary old(folder.copyOf(library).c_str());
    ASSERT_EQ(old.registerServer(), S_OK);
    EXPECT_EQ(library.registerServer(), S_OK);
    EXPECT_TRUE(samePath(registered(), library.path()));
    EXPECT_EQ(old.unregisterServer(), S_OK);
    EXPECT_TRUE(samePath(registered(), library.path()));
  }
  EXPECT_EQ(library.unregisterServer(), S_OK);
  EXPECT_EQ(changes(before, ourClasses()), none);
}

}  // namespace
}  // namespace mervane::tests
