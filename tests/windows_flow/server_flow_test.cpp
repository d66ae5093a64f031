#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "mervane/convert.h"
#include "tests/hosts_workbook/fixture.h"
#include "tests/support/own_user_registry.h"
#include "tests/windows_flow/dispatch_client.h"
#include "tests/windows_flow/foreign_application.h"
#include "tests/windows_flow/host_dispatch.h"
#include "tests/windows_flow/press_button.h"

namespace mervane::tests {
namespace {

using Microsoft::WRL::ComPtr;

constexpr GUID classifierId = {0xB4FB371B, 0x7FDB, 0x485F, {0x8D, 0xA1, 0xEE, 0x10, 0x79, 0x6A, 0xC2, 0xEE}};

/// A setting in the user's part of the registry as a text.
std::string setting(const char* section, const char* name) {
  char text[256] = {};
  DWORD number = 0;
  DWORD size = sizeof number;
  const std::string key = std::string("Software\\Tarvik\\MervaneCls3\\") + section;
  if (RegGetValueA(HKEY_CURRENT_USER, key.c_str(), name, RRF_RT_REG_DWORD, nullptr, &number, &size) == ERROR_SUCCESS) {
    return std::to_string(number);
  }
  size = sizeof text;
  const LSTATUS status = RegGetValueA(HKEY_CURRENT_USER, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? text : "error " + std::to_string(status);
}

/// The server's library, loaded without a registration.
class Server {
 public:
  Server() : library_(LoadLibraryW(std::filesystem::path(MERVANE_SERVER).c_str())) {}
  ~Server() { FreeLibrary(library_); }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  [[nodiscard]] bool isLoaded() const { return library_ != nullptr; }
  [[nodiscard]] ComPtr<IDispatch> createClassifier() const {
    using GetClass = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto getClass =
        reinterpret_cast<GetClass>(reinterpret_cast<void*>(GetProcAddress(library_, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    ComPtr<IDispatch> classifier;
    if (SUCCEEDED(getClass(classifierId, IID_PPV_ARGS(&factory)))) {
      factory->CreateInstance(nullptr, IID_PPV_ARGS(&classifier));
    }
    return classifier;
  }
  [[nodiscard]] HRESULT canUnload() const {
    using CanUnload = HRESULT(WINAPI*)();
    return reinterpret_cast<CanUnload>(reinterpret_cast<void*>(GetProcAddress(library_, "DllCanUnloadNow")))();
  }

 private:
  HMODULE library_;
};

/// A user who presses these buttons one after the other, each as soon as a window shows it.
class User {
 public:
  explicit User(std::vector<std::wstring> buttons)
      : hand_([this, buttons = std::move(buttons)] {
          for (const std::wstring& button : buttons) {
            if (pressButton(button, GetCurrentProcessId(), std::chrono::seconds(60))) ++pressed_;
          }
        }) {}
  ~User() { hand_.join(); }
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  [[nodiscard]] int pressed() const { return pressed_; }

 private:
  std::atomic<int> pressed_{0};
  std::thread hand_;
};

class ServerFlow : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(server.isLoaded());
    std::filesystem::copy_file(MERVANE_SOURCE_DIR "/examples/iris.xlsx", file);
    application = DispatchClient(adopted(ForeignApplication::create()));
    book = application->object(L"Workbooks").object(L"Open", {file.string()});
    classifier = DispatchClient(server.createClassifier());
    ASSERT_NE(classifier->get(), nullptr);
    classifier->putReference(L"ExcelApplication", *application);
    classifier->put(L"CellInputs", "Iris!B2:E151");
    classifier->put(L"CellOutputs", "Iris!G2");
  }

  std::string showDialog() { return toText(classifier->call(L"ShowMainForm"), englishLocale()); }

  const OwnUserRegistry registry{L"Software\\MervaneFlowTest"};
  Server server;
  workbook::tests::TemporaryFolder folder;
  std::filesystem::path file = folder / "iris.xlsx";
  std::optional<DispatchClient> application;
  std::optional<DispatchClient> book;
  std::optional<DispatchClient> classifier;
};

TEST_F(ServerFlow, ClusterizePressedInTheRealWindowEndsWithCloseAndTheBookOfTheCommandLine) {
  {
    const User user({L"Clusterize"});
    EXPECT_EQ(showDialog(), "CLOSE");
  }
  book->call(L"SaveAs", {file.string()});

  const std::filesystem::path expected = folder / "expected.xlsx";
  const std::string command = "\"\"" MERVANE_PROGRAM "\" cluster \"" MERVANE_SOURCE_DIR
                              "/examples/iris.xlsx\" -i Iris!B2:E151 --outputs Iris!G2 --quiet -o \"" +
                              expected.string() + "\"\"";
  ASSERT_EQ(std::system(command.c_str()), 0);  // NOLINT(cert-env33-c): the program was built with this test.
  const auto parts = workbook::tests::readZip(file);
  const auto expectedParts = workbook::tests::readZip(expected);
  EXPECT_EQ(parts.size(), expectedParts.size());
  for (const auto& [name, content] : expectedParts) {
    ASSERT_TRUE(parts.contains(name)) << name;
    EXPECT_EQ(parts.at(name), content) << name;
  }
  EXPECT_TRUE(parts.contains("xl/charts/chart2.xml"));
  classifier->call(L"UnloadfrmMain");
}

TEST_F(ServerFlow, WhatTheDialogHeldIsRememberedInTheRegistry) {
  {
    const User user({L"Clusterize"});
    EXPECT_EQ(showDialog(), "CLOSE");
  }
  EXPECT_EQ(setting("values", "Clusters"), "3");
  EXPECT_EQ(setting("values", "Epochs"), "100");
  classifier->call(L"UnloadfrmMain");
}

TEST_F(ServerFlow, DataThatAreNoNumbersAreToldInAMessageBoxAndLeaveTheBookAsItWas) {
  classifier->put(L"CellInputs", "Iris!A2:F151");
  {
    const User user({L"Clusterize", L"OK"});
    EXPECT_EQ(showDialog(), "INVALIDDATA");
  }
  book->call(L"SaveAs", {file.string()});
  EXPECT_EQ(workbook::tests::readZip(file), workbook::tests::readZip(MERVANE_SOURCE_DIR "/examples/iris.xlsx"));
  classifier->call(L"UnloadfrmMain");
}

TEST_F(ServerFlow, AllReferencesAreGivenBackOnceTheDialogIsUnloaded) {
  {
    const User user({L"Clusterize"});
    EXPECT_EQ(showDialog(), "CLOSE");
  }
  EXPECT_GT(HostDispatch::alive(), 0);
  classifier->call(L"UnloadfrmMain");
  classifier.reset();
  EXPECT_EQ(server.canUnload(), S_OK);
  book.reset();
  application.reset();
  EXPECT_EQ(HostDispatch::alive(), 0);
}

}  // namespace
}  // namespace mervane::tests
