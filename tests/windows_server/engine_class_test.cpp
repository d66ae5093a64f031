#include <gtest/gtest.h>
#include <network_engine.h>

#include <algorithm>
#include <memory>

#include "support/server/sample_blocks_interface.h"
#include "tests/windows_server/client.h"
#include "tests/windows_server/window_user.h"

// The engine as a class of the component model: the component finds it by its id and calls it.

namespace mervane::tests {
namespace {

Value someRows() {
  return grid(1, 1, {{1, 10}, {9, 90}, {2, 20}, {8, 80}, {5, 50}});
}

/// An engine that notes what it is told. It answers the winner 1 and lives where it is declared.
class RecordingEngine final : public INetworkEngine, public server::ISampleBlocks, public ISupportErrorInfo {
 public:
  explicit RecordingEngine(bool takesBlocks = false) : takesBlocks_(takesBlocks) {}
  virtual ~RecordingEngine() = default;
  std::vector<std::string> calls;
  HRESULT adjusting = S_OK;
  ULONG references = 1;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
    *object = nullptr;
    if (interfaceId == IID_ISupportErrorInfo) {
      *object = static_cast<ISupportErrorInfo*>(this);
    } else if (interfaceId == IID_IUnknown || interfaceId == server::engineInterfaceId) {
      *object = static_cast<INetworkEngine*>(this);
    } else if (takesBlocks_ && interfaceId == server::sampleBlocksInterfaceId) {
      *object = static_cast<server::ISampleBlocks*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID) override { return S_OK; }

  HRESULT STDMETHODCALLTYPE Create(LONG layers, LONG inputs, SAFEARRAY** neurons, double weights,
                                   LONG function) override {
    LONG index = 0;
    LONG count = 0;
    SafeArrayGetElement(*neurons, &index, &count);
    return note("Create " + std::to_string(layers) + " " + std::to_string(inputs) + " " + std::to_string(count) + " " +
                std::to_string(weights) + " " + std::to_string(function));
  }
  HRESULT STDMETHODCALLTYPE GetWeightRows(LONG* rows) override {
    *rows = 2;
    return note("GetWeightRows");
  }
  HRESULT STDMETHODCALLTYPE GetWeightColumns(LONG* columns) override {
    *columns = 1;
    return note("GetWeightColumns");
  }
  HRESULT STDMETHODCALLTYPE InitConvexWeights() override { return note("InitConvexWeights"); }
  HRESULT STDMETHODCALLTYPE FinishWeightSetup() override { return note("FinishWeightSetup"); }
  HRESULT STDMETHODCALLTYPE SetLearningRate(double rate) override {
    return note("SetLearningRate " + std::to_string(rate));
  }
  HRESULT STDMETHODCALLTYPE SetRadius(LONG radius) override { return note("SetRadius " + std::to_string(radius)); }
  HRESULT STDMETHODCALLTYPE SetWeight(double value, LONG layer, LONG first, LONG second, LONG* result) override {
    *result = 0;
    return note("SetWeight " + std::to_string(value) + " " + std::to_string(layer) + " " + std::to_string(first) + " " +
                std::to_string(second));
  }
  HRESULT STDMETHODCALLTYPE SetInputs(SAFEARRAY** sample) override { return note("SetInputs " + textOf(sample)); }
  HRESULT STDMETHODCALLTYPE SetConvexInputs(SAFEARRAY** sample, double factor, LONG layer) override {
    return note("SetConvexInputs " + textOf(sample) + std::to_string(factor) + " " + std::to_string(layer));
  }
  HRESULT STDMETHODCALLTYPE Propagate() override { return note("Propagate"); }
  HRESULT STDMETHODCALLTYPE GetWinner(LONG* winner) override {
    *winner = 1;
    return note("GetWinner");
  }
  HRESULT STDMETHODCALLTYPE AdjustWeights() override {
    note("AdjustWeights");
    if (FAILED(adjusting)) {
      ComPtr<ICreateErrorInfo> created;
      CreateErrorInfo(&created);
      wchar_t text[] = L"the engine is tired";
      created->SetDescription(text);
      ComPtr<IErrorInfo> info;
      created.As(&info);
      SetErrorInfo(0, info.Get());
    }
    return adjusting;
  }
  HRESULT STDMETHODCALLTYPE DestroyNetwork() override { return note("DestroyNetwork"); }
  HRESULT STDMETHODCALLTYPE Learn(const double* values, std::int64_t valueCount, std::int32_t count) override {
    return note("Learn " + std::to_string(count) + ":" + textOf(values, valueCount));
  }
  HRESULT STDMETHODCALLTYPE LearnConvex(const double* values, std::int64_t valueCount, const double* factors,
                                        std::int32_t count) override {
    return note("LearnConvex " + std::to_string(count) + ":" + textOf(values, valueCount) + " with" +
                textOf(factors, count));
  }
  HRESULT STDMETHODCALLTYPE Classify(const double* values, std::int64_t valueCount, std::int32_t* winners,
                                     std::int32_t count) override {
    std::fill(winners, winners + count, 1);
    return note("Classify " + std::to_string(count) + ":" + textOf(values, valueCount));
  }
  HRESULT STDMETHODCALLTYPE ClassifyConvex(const double* values, std::int64_t valueCount, std::int32_t* winners,
                                           std::int32_t count) override {
    std::fill(winners, winners + count, 1);
    return note("ClassifyConvex " + std::to_string(count) + ":" + textOf(values, valueCount));
  }

 private:
  HRESULT note(std::string call) {
    calls.push_back(std::move(call));
    return S_OK;
  }
  static std::string textOf(SAFEARRAY** sample) {
    std::string text;
    LONG lower = 0;
    LONG upper = -1;
    SafeArrayGetLBound(*sample, 1, &lower);
    SafeArrayGetUBound(*sample, 1, &upper);
    for (LONG i = lower; i <= upper; ++i) {
      double element = 0.0;
      SafeArrayGetElement(*sample, &i, &element);
      text += std::to_string(element) + " ";
    }
    return lower == 0 ? text : "(not zero-based)";
  }
  static std::string textOf(const double* values, std::int64_t count) {
    std::string text;
    for (std::int64_t i = 0; i < count; ++i) text += " " + std::to_string(values[i]);
    return text;
  }

  bool takesBlocks_;
};

/// Serves one engine under the engine's class id in this process while it lives.
class Serving final : public IClassFactory {
 public:
  explicit Serving(RecordingEngine& engine) : engine_(engine) {
    EXPECT_EQ(CoRegisterClassObject(server::engineClassId, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_),
              S_OK);
  }
  virtual ~Serving() { CoRevokeClassObject(cookie_); }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
    *object = nullptr;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IClassFactory) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID interfaceId, void** object) override {
    return engine_.QueryInterface(interfaceId, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  RecordingEngine& engine_;
  DWORD cookie_ = 0;
};

TEST(EngineClass, TheComponentCreatesTheRegisteredOneAndCallsIt) {
  RecordingEngine engine;
  {
    const Serving serving(engine);
    const Classifier classifier;
    classifier->put_EpochCount(1);
    classifier->put_Inputs(*grid(1, 1, {{1, 10}, {9, 90}}).get());
    EXPECT_EQ(classifier->Run(), S_OK);
    EXPECT_EQ(outputsOf(classifier.get()), (Numbers{1, {2, 2}}));
  }
  EXPECT_EQ(engine.calls,
            (std::vector<std::string>{"Create 1 2 3 0.300000 3", "InitConvexWeights", "SetLearningRate 0.000000",
                                      "SetRadius 0", "SetConvexInputs 0.001000 0.001000 3.000000 0", "Propagate",
                                      "AdjustWeights", "SetConvexInputs 0.999000 0.999000 4.500000 0", "Propagate",
                                      "AdjustWeights", "SetConvexInputs 0.001000 0.001000 1.000000 0", "Propagate",
                                      "GetWinner", "SetConvexInputs 0.999000 0.999000 1.000000 0", "Propagate",
                                      "GetWinner", "DestroyNetwork"}));
  EXPECT_EQ(engine.references, 1U);
}

TEST(EngineClass, TheWeightsAreSetCellByCellWithoutTheConvexMode) {
  RecordingEngine engine;
  const Serving serving(engine);
  const Classifier classifier;
  classifier->put_EpochCount(0);
  classifier->put_UseConvexCombination(VARIANT_FALSE);
  VARIANT_BOOL off = VARIANT_FALSE;
  classifier->put_AutoScaleInputs(&off);
  classifier->put_Inputs(*grid(1, 1, {{7, 70}}).get());
  EXPECT_EQ(classifier->Run(), S_OK);
  EXPECT_EQ(engine.calls,
            (std::vector<std::string>{"Create 1 2 3 0.300000 3", "GetWeightRows", "GetWeightColumns",
                                      "SetWeight 0.300000 0 0 0", "GetWeightColumns", "SetWeight 0.300000 0 1 0",
                                      "FinishWeightSetup", "SetInputs 7.000000 70.000000 ", "Propagate", "GetWinner"}));
}

TEST(EngineClass, AnEngineThatTakesBlocksIsCalledOnceForManySamples) {
  const auto callsOf = [](VARIANT_BOOL convex) {
    RecordingEngine engine(true);
    {
      const Serving serving(engine);
      const Classifier classifier;
      classifier->put_EpochCount(1);
      classifier->put_UseConvexCombination(convex);
      classifier->put_Inputs(*grid(1, 1, {{1, 10}, {9, 90}}).get());
      EXPECT_EQ(classifier->Run(), S_OK);
      EXPECT_EQ(outputsOf(classifier.get()), (Numbers{1, {2, 2}}));
    }
    EXPECT_EQ(engine.references, 1U);
    return engine.calls;
  };
  EXPECT_EQ(callsOf(VARIANT_TRUE),
            (std::vector<std::string>{"Create 1 2 3 0.300000 3", "InitConvexWeights", "SetLearningRate 0.000000",
                                      "SetRadius 0",
                                      "LearnConvex 2: 0.001000 0.001000 0.999000 0.999000 with 3.000000 4.500000",
                                      "ClassifyConvex 2: 0.001000 0.001000 0.999000 0.999000", "DestroyNetwork"}));
  const std::vector<std::string> plain = callsOf(VARIANT_FALSE);
  ASSERT_GE(plain.size(), 3U);
  EXPECT_EQ(plain[plain.size() - 3], "Learn 2: 0.001000 0.001000 0.999000 0.999000");
  EXPECT_EQ(plain[plain.size() - 2], "Classify 2: 0.001000 0.001000 0.999000 0.999000");
}

TEST(EngineClass, AFailingCallIsReportedWithItsNumberAndText) {
  RecordingEngine engine;
  engine.adjusting = static_cast<HRESULT>(0x80041234);
  const Serving serving(engine);
  const Classifier classifier;
  classifier->put_Inputs(*someRows().get());
  ReportReader reader(L"Abort");
  EXPECT_EQ(classifier->Run(), S_OK);
  const std::vector<ReportReader::Report> reports = reader.reports();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_NE(reports[0].text.find(L"Error: -2147216844, (the engine is tired)"), std::wstring::npos);
  EXPECT_NE(reports[0].text.find(L"in MervaneClass3.Classifier3.TrainNetwork"), std::wstring::npos);
}

TEST(EngineClass, TheShippedServerGivesTheResultsOfTheBuiltInOne) {
  const auto clusters = [](bool convex) {
    const Classifier classifier;
    classifier->put_UseConvexCombination(convex ? VARIANT_TRUE : VARIANT_FALSE);
    classifier->put_Inputs(*someRows().get());
    EXPECT_EQ(classifier->Run(), S_OK);
    return outputsOf(classifier.get());
  };
  const Numbers builtIn = clusters(true);
  const Numbers builtInPlain = clusters(false);
  EXPECT_EQ(GetModuleHandleW(L"MervaneEngine.dll"), nullptr);
  {
    ServerLibrary library(MERVANE_ENGINE_SERVER);
    ASSERT_EQ(library.registerServer(), S_OK);
    EXPECT_EQ(library.canUnloadNow(), S_OK);
    {
      const Classifier classifier;
      EXPECT_EQ(library.canUnloadNow(), S_FALSE);
    }
    EXPECT_EQ(library.canUnloadNow(), S_OK);
    EXPECT_EQ(clusters(true), builtIn);
    EXPECT_EQ(clusters(false), builtInPlain);
    EXPECT_EQ(library.unregisterServer(), S_OK);
  }
  const Classifier classifier;  // The built-in one serves again.
  classifier->put_Inputs(*someRows().get());
  EXPECT_EQ(classifier->Run(), S_OK);
  EXPECT_EQ(outputsOf(classifier.get()), builtIn);
}

TEST(EngineClass, TheShippedServerTakesBlocksAndRefusesWhatIsNoSample) {
  ServerLibrary library(MERVANE_ENGINE_SERVER);
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(
      library.classObject(server::engineClassId, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())),
      S_OK);
  ComPtr<INetworkEngine> engine;
  ASSERT_EQ(
      factory->CreateInstance(nullptr, server::engineInterfaceId, reinterpret_cast<void**>(engine.GetAddressOf())),
      S_OK);
  // Many samples at once, where the caller knows how to ask.
  ComPtr<server::ISampleBlocks> blocks;
  ASSERT_EQ(engine->QueryInterface(server::sampleBlocksInterfaceId, reinterpret_cast<void**>(blocks.GetAddressOf())),
            S_OK);
  const double numbers[] = {0.1, 0.2, 0.3};
  std::int32_t winner = -7;
  EXPECT_TRUE(FAILED(blocks->Learn(numbers, 2, 1)));  // There is no network yet.
  SAFEARRAY* counts = SafeArrayCreateVector(VT_I4, 0, 1);
  const Value countsOwner(counts, VT_I4);
  *static_cast<LONG*>(counts->pvData) = 2;
  ASSERT_EQ(engine->Create(1, 2, &counts, 0.3, 3), S_OK);
  ASSERT_EQ(engine->InitConvexWeights(), S_OK);
  EXPECT_EQ(blocks->Learn(numbers, 2, 1), S_OK);
  EXPECT_TRUE(FAILED(blocks->Learn(numbers, 3, 1)));
  EXPECT_EQ(blocks->Learn(numbers, -2, 1), E_INVALIDARG);
  EXPECT_EQ(blocks->Learn(nullptr, 2, 1), E_POINTER);
  EXPECT_EQ(blocks->LearnConvex(numbers, 2, nullptr, 1), E_POINTER);
  EXPECT_EQ(blocks->LearnConvex(numbers, 2, numbers, -1), E_INVALIDARG);
  EXPECT_EQ(blocks->Classify(numbers, 2, nullptr, 1), E_POINTER);
  EXPECT_EQ(blocks->Classify(numbers, 2, &winner, 1), S_OK);
  EXPECT_TRUE(winner == 0 || winner == 1) << winner;
  EXPECT_EQ(blocks->ClassifyConvex(nullptr, 2, &winner, 1), E_POINTER);
  blocks.Reset();
  ASSERT_EQ(engine->DestroyNetwork(), S_OK);

  EXPECT_EQ(engine->SetInputs(nullptr), static_cast<HRESULT>(0x800A000D));
  SAFEARRAY* integers = SafeArrayCreateVector(VT_I4, 0, 2);
  const Value owner(integers, VT_I4);
  EXPECT_EQ(engine->SetInputs(&integers), static_cast<HRESULT>(0x800A000D));
  EXPECT_TRUE(FAILED(engine->Propagate()));  // There is no network yet.
  EXPECT_EQ(engine->GetWinner(nullptr), E_POINTER);
  engine.Reset();
  factory.Reset();
  EXPECT_EQ(library.canUnloadNow(), S_OK);
}

}  // namespace
}  // namespace mervane::tests
