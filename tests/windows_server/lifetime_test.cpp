#include <gtest/gtest.h>

#include <thread>

#include "tests/support/own_user_registry.h"
#include "tests/windows_server/sink.h"
#include "tests/windows_server/window_user.h"

namespace mervane::tests {
namespace {

Value someRows() {
  return grid(1, 1, {{1, 10}, {9, 90}, {2, 20}, {8, 80}, {5, 50}});
}

/// Reports of runs that fail because the network has been let go.
std::size_t count(const std::wstring& text, const std::wstring& part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::wstring::npos; at = text.find(part, at + 1)) ++found;
  return found;
}

TEST(UnloadTest, TheLibraryMayGoWhenNoObjectLivesAndNoLockIsHeld) {
  ServerLibrary library(MERVANE_SERVER);
  EXPECT_EQ(library.canUnloadNow(), S_OK);
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(library.classObject(server::classId, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())),
            S_OK);
  EXPECT_EQ(library.canUnloadNow(), S_OK);
  factory->LockServer(TRUE);
  EXPECT_EQ(library.canUnloadNow(), S_FALSE);
  factory->LockServer(FALSE);
  EXPECT_EQ(library.canUnloadNow(), S_OK);
  ComPtr<_Classifier3> object = newClassifier();
  EXPECT_EQ(library.canUnloadNow(), S_FALSE);
  object->UnloadfrmMain();
  EXPECT_EQ(library.canUnloadNow(), S_FALSE);
  EXPECT_EQ(object.Reset(), 0U);
  EXPECT_EQ(library.canUnloadNow(), S_OK);
}

TEST(UnloadTest, OneObjectOfSeveralKeepsTheLibrary) {
  ServerLibrary library(MERVANE_SERVER);
  ComPtr<_Classifier3> first = newClassifier();
  ComPtr<_Classifier3> second = newClassifier();
  first->UnloadfrmMain();
  first.Reset();
  EXPECT_EQ(library.canUnloadNow(), S_FALSE);
  second->UnloadfrmMain();
  second.Reset();
  EXPECT_EQ(library.canUnloadNow(), S_OK);
}

TEST(UnloadTest, ReferencesAreCountedToTheLast) {
  ServerLibrary library(MERVANE_SERVER);
  for (int round = 0; round < 20; ++round) {
    ComPtr<_Classifier3> object = newClassifier();
    LateBound late(object.Get());
    EXPECT_EQ(late.put(L"Inputs", someRows()).number, S_OK);
    EXPECT_EQ(late.call(L"Run").number, S_OK);
    EXPECT_NE(late.put(L"LearningRate", 5).number, S_OK);
    ComPtr<IConnectionPointContainer> container;
    object.CopyTo(IID_IConnectionPointContainer, reinterpret_cast<void**>(container.GetAddressOf()));
    ComPtr<IEnumConnectionPoints> points;
    container->EnumConnectionPoints(&points);
    ComPtr<ITypeInfo> info;
    object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info);
    object->UnloadfrmMain();
    EXPECT_EQ(library.canUnloadNow(), S_FALSE);
  }
  EXPECT_EQ(library.canUnloadNow(), S_OK);
}

TEST(UnloadTest, TheApplicationObjectIsGivenBack) {
  Sink application;
  {
    const Classifier classifier;
    LateBound late = classifier.lateBound();
    EXPECT_EQ(late.putReference(L"ExcelApplication", static_cast<IDispatch*>(&application)).number, S_OK);
    EXPECT_GT(application.references, 1U);
    { const Value given = late.get(L"ExcelApplication"); }
    EXPECT_EQ(late.putReference(L"ExcelApplication", static_cast<IDispatch*>(nullptr)).number, S_OK);
    EXPECT_EQ(application.references, 1U);
    EXPECT_EQ(late.putReference(L"ExcelApplication", static_cast<IDispatch*>(&application)).number, S_OK);
  }
  EXPECT_EQ(application.references, 1U);
}

TEST(UnloadTest, TheLastReferenceMayGoInTheMiddleOfARun) {
  Sink sink;
  _Classifier3* object = newClassifier().Detach();
  object->put_Inputs(*someRows().get());
  ComPtr<IConnectionPointContainer> container;
  object->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(container.GetAddressOf()));
  ComPtr<IConnectionPoint> point;
  container->FindConnectionPoint(server::eventInterfaceId, &point);
  DWORD cookie = 0;
  point->Advise(&sink, &cookie);
  point.Reset();
  container.Reset();
  sink.action = [&](LONG& epoch, double&, LONG&) {
    if (epoch == 1) {
      object->UnloadfrmMain();
      object->Release();
      epoch = 100;
    }
    return S_OK;
  };
  const ReportReader reader(L"Abort");
  EXPECT_EQ(object->Run(), S_OK);
  EXPECT_EQ(sink.references, 1U);
}

TEST(AfterUnload, RunFailsAsACallOnAnEmptyReferenceInEachOfItsSteps) {
  ComPtr<_Classifier3> object = newClassifier();
  object->put_Inputs(*someRows().get());
  object->UnloadfrmMain();
  ReportReader reader(L"Abort");
  EXPECT_EQ(object->Run(), S_OK);
  const std::vector<ReportReader::Report> reports = reader.reports();
  ASSERT_EQ(reports.size(), 3U);
  const wchar_t* const procedures[] = {L"CreateNetwork", L"TrainNetwork", L"StoreResults"};
  for (std::size_t i = 0; i < reports.size(); ++i) {
    EXPECT_EQ(count(reports[i].text, L"Error: 91, ("), 1U);
    EXPECT_EQ(count(reports[i].text, L"in MervaneClass3.Classifier3." + std::wstring(procedures[i]) + L" at line"), 1U);
  }
  EXPECT_EQ(outputsOf(object.Get()).elements, std::vector<LONG>(5, 0));
}

TEST(AfterUnload, ShowMainFormRaisesAndTheRestStillAnswers) {
  ComPtr<_Classifier3> object = newClassifier();
  object->UnloadfrmMain();
  BSTR answer = nullptr;
  const Raised raised = raisedBySlots(object->ShowMainForm(&answer));
  EXPECT_EQ(raised.number, static_cast<HRESULT>(0x80040064));
  EXPECT_EQ(raised.description, L"Classifier3 component failure");
  EXPECT_EQ(raised.source, L"MervaneClass3.Classifier3.ShowMainForm");
  EXPECT_EQ(answer, nullptr);
  EXPECT_EQ(object->put_Clusters(4), S_OK);
  EXPECT_EQ(object->UnloadfrmMain(), S_OK);
}

TEST(Apartments, TwoObjectsOfOneThreadShareOneCallStack) {
  const Classifier outer;
  outer->put_Inputs(*someRows().get());
  outer->put_EpochCount(1);
  ComPtr<_Classifier3> inner = newClassifier();
  inner->put_EpochCount(0);
  inner->UnloadfrmMain();
  Sink sink;
  sink.action = [&](LONG&, double&, LONG&) { return inner->Run(); };
  const Connection connection(outer.get(), server::eventInterfaceId, sink);
  ReportReader reader(L"Ignore");
  EXPECT_EQ(outer->Run(), S_OK);
  const std::vector<ReportReader::Report> reports = reader.reports();
  ASSERT_FALSE(reports.empty());
  EXPECT_EQ(count(reports.front().text, L"MervaneClass3.Classifier3.Run()"), 2U);
  EXPECT_EQ(count(reports.front().text, L"MervaneClass3.Classifier3.TrainNetwork()"), 1U);
}

TEST(Apartments, ThreadsHaveCallStacksAndWindowsOfTheirOwn) {
  ReportReader reader(L"Abort");
  const Classifier outer;
  outer->put_Inputs(*someRows().get());
  outer->put_EpochCount(1);
  DWORD otherThread = 0;
  Sink sink;
  sink.action = [&](LONG&, double&, LONG&) {
    // While a run of this thread is under way, another thread fails.
    std::thread([&] {
      const Apartment apartment;
      otherThread = GetCurrentThreadId();
      ComPtr<_Classifier3> inner = newClassifier();
      inner->UnloadfrmMain();
      inner->Run();
    }).join();
    return S_OK;
  };
  const Connection connection(outer.get(), server::eventInterfaceId, sink);
  EXPECT_EQ(outer->Run(), S_OK);
  const std::vector<ReportReader::Report> reports = reader.reports();
  ASSERT_EQ(reports.size(), 3U);
  for (const ReportReader::Report& report : reports) {
    EXPECT_EQ(report.thread, otherThread);
    EXPECT_LE(count(report.text, L"MervaneClass3.Classifier3.Run()"), 1U);
  }
}

TEST(Apartments, ThreadsTrainAtTheSameTimeWithEqualResults) {
  std::vector<Numbers> results(4);
  std::vector<std::thread> threads;
  for (Numbers& result : results) {
    threads.emplace_back([&result] {
      const Apartment apartment;
      for (int round = 0; round < 5; ++round) {
        const Classifier classifier;
        classifier->put_Inputs(*someRows().get());
        classifier->Run();
        result = outputsOf(classifier.get());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const Numbers& result : results) EXPECT_EQ(result, results.front());
  EXPECT_EQ(results.front().elements.size(), 5U);
}

TEST(Apartments, AnotherApartmentsCallsAreMarshalled) {
  std::thread([] {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    {
      ComPtr<IDispatch> object;
      ASSERT_EQ(CoCreateInstance(server::classId, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
      LateBound late(object.Get());
      EXPECT_EQ(late.put(L"Inputs", someRows()).number, S_OK);
      EXPECT_EQ(late.call(L"Run").number, S_OK);
      EXPECT_EQ(late.put(L"LearningRate", 5).source, L"MervaneCls31.Classifier3");
      const Value outputs = late.get(L"Outputs");
      ASSERT_EQ(outputs.type(), VT_ARRAY | VT_I4);
      LONG upper = 0;
      SafeArrayGetUBound(outputs->parray, 1, &upper);
      EXPECT_EQ(upper, 5);
      EXPECT_EQ(late.call(L"UnloadfrmMain").number, S_OK);
    }
    CoUninitialize();
  }).join();
}

/// The application's own library, registered while it lives: slots whose arguments it describes are marshalled only
/// where it is.
class ApplicationLibrary {
 public:
  ApplicationLibrary() {
    const std::string path = MERVANE_APPLICATION_LIBRARY;
    ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadTypeLibEx(std::wstring(path.begin(), path.end()).c_str(), REGKIND_REGISTER, &library), S_OK);
  }
  ~ApplicationLibrary() {
    const GUID id = {0x00020813, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    EXPECT_EQ(UnRegisterTypeLib(id, 1, 3, 0, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32), S_OK);
  }
  ApplicationLibrary(const ApplicationLibrary&) = delete;
  ApplicationLibrary& operator=(const ApplicationLibrary&) = delete;
};

/// The path of the type library under the neutral language while it lives: Wine's marshaller looks there alone.
class NeutralEntry {
 public:
  NeutralEntry() {
    const std::wstring path = ServerLibrary(MERVANE_SERVER).path();
    HKEY key = nullptr;
    EXPECT_EQ(
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, (parent_ + L"\\0\\" + (sizeof(void*) == 8 ? L"win64" : L"win32")).c_str(),
                        0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
        ERROR_SUCCESS);
    RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(path.c_str()),
                   static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
  }
  ~NeutralEntry() {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (parent_ + L"\\0").c_str());
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, (parent_ + L"\\0").c_str());
  }
  NeutralEntry(const NeutralEntry&) = delete;
  NeutralEntry& operator=(const NeutralEntry&) = delete;

 private:
  std::wstring parent_ = L"Software\\Classes\\TypeLib\\{F908A790-9758-40C7-85D5-DB401F108A90}\\2.1";
};

TEST(Apartments, BothIdsOfTheDefaultInterfaceAreMarshalled) {
  const ApplicationLibrary application;
  const NeutralEntry neutral;
  std::thread([] {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    for (const IID& id : {server::defaultInterfaceId, server::earlierDefaultInterfaceId}) {
      ComPtr<IUnknown> object;
      ASSERT_EQ(CoCreateInstance(server::classId, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
      ComPtr<_Classifier3> slots;
      EXPECT_EQ(object->QueryInterface(id, reinterpret_cast<void**>(slots.GetAddressOf())), S_OK);
      if (slots == nullptr) {
        ComPtr<IDispatch> late;
        object.As(&late);
        LateBound(late.Get()).call(L"UnloadfrmMain");
        continue;
      }
      EXPECT_EQ(slots->put_Clusters(2), S_OK);
      LONG clusters = 0;
      EXPECT_EQ(slots->get_Clusters(&clusters), S_OK);
      EXPECT_EQ(clusters, 2);
      EXPECT_EQ(slots->put_Inputs(*someRows().get()), S_OK);
      EXPECT_EQ(slots->Run(), S_OK);
      const Numbers outputs = outputsOf(slots.Get());
      EXPECT_EQ(outputs.elements.size(), 5U);
      for (const LONG cluster : outputs.elements) EXPECT_TRUE(cluster == 1 || cluster == 2) << cluster;
      double scaled = 0.0;
      EXPECT_EQ(slots->ScaleValue(5, 0, 10, 0, 1, &scaled), S_OK);
      EXPECT_EQ(scaled, 0.5);
      EXPECT_EQ(slots->UnloadfrmMain(), S_OK);
    }
    CoUninitialize();
  }).join();
}

LOGFONTW fontOf(HWND control) {
  LOGFONTW font{};
  GetObjectW(reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof font, &font);
  return font;
}

TEST(ServerWindows, ARefusedCheckIsToldInABoxWithoutATitleOfItsOwn) {
  const OwnUserRegistry registry(L"Software\\MervaneServerTest");
  const Classifier classifier;
  LOGFONTW barFont{};
  LOGFONTW listFont{};
  std::wstring title;
  std::thread user([&] {
    const HWND dialog = waitForWindow(L"MervaneOptionWindow");
    const HWND clusterize = buttonOf(dialog, L"Clusterize");
    const HWND list = FindWindowExW(dialog, nullptr, L"MervaneOptionList", nullptr);
    barFont = fontOf(clusterize);
    listFont = fontOf(FindWindowExW(list, nullptr, L"EDIT", nullptr));
    pressButton(clusterize);
    const HWND box = waitForWindow(L"#32770");
    title = textOfControl(box);
    pressButton(buttonOf(box, L"OK"));
  });
  // There is no application to ask for the ranges.
  BSTR answer = nullptr;
  EXPECT_EQ(classifier->ShowMainForm(&answer), S_OK);
  user.join();
  EXPECT_STREQ(answer, L"INVALIDDATA");
  SysFreeString(answer);
  EXPECT_EQ(title, L"Error");
  EXPECT_STREQ(barFont.lfFaceName, L"Tahoma");
  EXPECT_STREQ(listFont.lfFaceName, L"Tahoma");
  EXPECT_EQ(barFont.lfCharSet, 204);
  EXPECT_EQ(listFont.lfCharSet, 204);
  EXPECT_EQ(barFont.lfWeight, FW_BOLD);
  EXPECT_EQ(listFont.lfWeight, FW_NORMAL);
}

}  // namespace
}  // namespace mervane::tests
