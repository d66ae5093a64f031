#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <map>
#include <thread>

#include "tests/windows_server/client.h"
#include "tests/windows_server/window_user.h"

// The two windows of the served component, with a user on a thread of his own.

namespace mervane::tests {
namespace {

constexpr const wchar_t* optionWindow = L"MervaneOptionWindow";
constexpr const wchar_t* settings = L"Software\\Tarvik";

/// Does something with the next window of a class, from another thread.
class User {
 public:
  User(const wchar_t* className, std::function<void(HWND)> action)
      : thread_([className, action = std::move(action)] {
          const HWND window = waitForWindow(className);
          if (window == nullptr) {
            ADD_FAILURE() << "no window comes up";
            return;
          }
          Sleep(100);
          action(window);
        }) {}
  ~User() { thread_.join(); }
  User(const User&) = delete;
  User& operator=(const User&) = delete;

 private:
  std::thread thread_;
};

/// Where the environment names a folder, what the window shows is kept there for the manual.
void keepPicture(const char* name) {
  char folder[MAX_PATH] = {};
  if (GetEnvironmentVariableA("MERVANE_PICTURES", folder, MAX_PATH) == 0) return;
  // The script that asked takes the picture and removes the file.
  const std::string request = std::string(folder) + "/" + name + ".wanted";
  std::fclose(std::fopen(request.c_str(), "w"));
  for (int i = 0; i < 500 && GetFileAttributesA(request.c_str()) != INVALID_FILE_ATTRIBUTES; ++i) Sleep(20);
}

HWND listOf(HWND window) {
  return FindWindowExW(window, nullptr, L"MervaneOptionList", nullptr);
}

std::wstring shown(Classifier& classifier, std::function<void(HWND)> action) {
  const User user(optionWindow, std::move(action));
  BSTR result = nullptr;
  EXPECT_EQ(classifier->ShowMainForm(&result), S_OK);
  std::wstring text(result == nullptr ? L"" : result);
  SysFreeString(result);
  return text;
}

/// The user's settings of the component are away while it lives.
class NoSettings {
 public:
  NoSettings() { forget(); }
  ~NoSettings() { forget(); }
  NoSettings(const NoSettings&) = delete;
  NoSettings& operator=(const NoSettings&) = delete;

 private:
  static void forget() {
    RegDeleteTreeW(HKEY_CURRENT_USER, settings);
    RegDeleteKeyW(HKEY_CURRENT_USER, settings);
  }
};

/// The values of one section: texts as they are, numbers with "#" before them.
std::map<std::wstring, std::wstring> section(const wchar_t* name) {
  std::map<std::wstring, std::wstring> values;
  HKEY key = nullptr;
  const std::wstring path = std::wstring(settings) + L"\\MervaneCls3\\" + name;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return values;
  for (DWORD i = 0;; ++i) {
    wchar_t valueName[64] = {};
    BYTE data[256] = {};
    DWORD nameLength = 64;
    DWORD dataLength = sizeof data - sizeof(wchar_t);
    DWORD type = REG_NONE;
    if (RegEnumValueW(key, i, valueName, &nameLength, nullptr, &type, data, &dataLength) != ERROR_SUCCESS) break;
    DWORD number = 0;
    memcpy(&number, data, sizeof number);
    values[valueName] = type == REG_DWORD ? L"#" + std::to_wstring(static_cast<LONG>(number))
                                          : std::wstring(reinterpret_cast<wchar_t*>(data));
  }
  RegCloseKey(key);
  return values;
}

class ServedDialog : public testing::Test {
 protected:
  NoSettings none;
  Classifier classifier;
};

TEST_F(ServedDialog, CloseAnswersCloseAndStoresThePlaceAlone) {
  EXPECT_EQ(shown(classifier,
                  [](HWND window) {
                    keepPicture("dialog");
                    pressButton(buttonOf(window, L"Close"));
                  }),
            L"CLOSE");
  EXPECT_TRUE(section(L"values").empty());
  EXPECT_EQ(section(L"window").size(), 4U);
}

TEST_F(ServedDialog, ABrowseButtonHandsBackAndTheReferenceComesUpAgain) {
  EXPECT_EQ(shown(classifier,
                  [](HWND window) {
                    const HWND caption = buttonOf(listOf(window), L"Inputs:");
                    pressButton(GetWindow(GetWindow(caption, GW_HWNDNEXT), GW_HWNDNEXT));
                  }),
            L"INPUTS");
  BSTR reference = SysAllocString(L"Sheet1!B2:E151");
  EXPECT_EQ(classifier->put_CellInputs(&reference), S_OK);
  SysFreeString(reference);
  EXPECT_EQ(shown(classifier,
                  [](HWND window) {
                    const HWND caption = buttonOf(listOf(window), L"Inputs:");
                    EXPECT_EQ(textOfControl(GetWindow(caption, GW_HWNDNEXT)), L"Sheet1!B2:E151");
                    SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
                  }),
            L"CLOSE");
  EXPECT_TRUE(section(L"window").empty());
}

TEST_F(ServedDialog, ClusterizeStoresEveryValueInTheRegistry) {
  // There is no spreadsheet to cluster in.
  BSTR result = nullptr;
  {
    const User user(optionWindow, [](HWND window) {
      const HWND list = listOf(window);
      pressButton(buttonOf(list, L"Output formatting parameters"));
      Sleep(100);
      keepPicture("dialog_open");
      pressButton(buttonOf(list, L"to multiple columns"));
      pressButton(buttonOf(list, L"Set colors"));
      Sleep(50);
      pressButton(buttonOf(window, L"Clusterize"));
      const HWND message = waitForWindow(L"#32770");
      PostMessageW(message, WM_COMMAND, IDOK, 0);
    });
    EXPECT_EQ(classifier->ShowMainForm(&result), S_OK);
  }
  EXPECT_STREQ(result, L"INVALIDDATA");
  SysFreeString(result);
  const std::map<std::wstring, std::wstring> expected = {{L"INPUTS", L""},
                                                         {L"OUTPUTS", L""},
                                                         {L"CLUSTERS", L"3"},
                                                         {L"LEARNINGRATE", L"0.5"},
                                                         {L"EPOCHS", L"#100"},
                                                         {L"INITIALWEIGHTS", L"0.3"},
                                                         {L"STARTLEARNINGRADIUS", L"#3"},
                                                         {L"USECONVEX", L"1"},
                                                         {L"SCALEVALUES", L"1"},
                                                         {L"ACTIVATIONFUNCTION", L"3"},
                                                         {L"DATAGROUP", L"#1"},
                                                         {L"NNPARAMSGROUP", L"#1"},
                                                         {L"OUTPUTGROUP", L"#1"},
                                                         {L"OUTSPLIT", L"#0"},
                                                         {L"AUTOFILTER", L"1"},
                                                         {L"DRAWCHARTS", L"1"},
                                                         {L"AVERAGES", L"1"},
                                                         {L"WEIGHTEDAVERAGES", L"1"},
                                                         {L"MINIMUMS", L"1"},
                                                         {L"MAXIMUMS", L"1"},
                                                         {L"CLUSTERWEIGHTS", L"1"},
                                                         {L"SETCOLORS", L"0"},
                                                         {L"SORTCLUSTERS", L"1"},
                                                         {L"TABLETORANGE", L"1"}};
  EXPECT_EQ(section(L"values"), expected);
  EXPECT_EQ(section(L"window").size(), 4U);
}

TEST(ServedReport, ShowsTheFailureAndIsAnsweredByItsButtons) {
  ComPtr<_Classifier3> object = newClassifier();
  object->put_EpochCount(0);
  object->put_Inputs(*grid(1, 1, {{1, 2}}).get());
  object->UnloadfrmMain();
  std::wstring report;
  {
    // CreateNetwork tries again and gives up; StoreResults is closed by the window's own box, which ignores.
    const User user(L"MervaneErrorWindow", [&](HWND window) {
      keepPicture("report");
      report = textOfControl(FindWindowExW(window, nullptr, L"EDIT", nullptr));
      EXPECT_EQ(buttonOf(window, L"Send to support"), nullptr);
      pressButton(buttonOf(window, L"Retry"));
      Sleep(200);
      pressButton(buttonOf(waitForWindow(L"MervaneErrorWindow"), L"Abort"));
      Sleep(200);
      PostMessageW(waitForWindow(L"MervaneErrorWindow"), WM_CLOSE, 0, 0);
      for (int i = 0; i < 20; ++i) {
        Sleep(50);
        const HWND further = findWindow(L"MervaneErrorWindow");
        if (further != nullptr) pressButton(buttonOf(further, L"Abort"));
      }
    });
    EXPECT_EQ(object->Run(), S_OK);
  }
  EXPECT_NE(report.find(L"Error: 91, (Object variable or With block variable not set)"), std::wstring::npos);
}

}  // namespace
}  // namespace mervane::tests
