// What it costs that the network engine is a class of the component model: the same clustering with the built-in engine
// and with MervaneEngine.dll behind its class id, turn by turn, as one ratio.
//
// usage: mervane_engine_class_bench MervaneCls31.dll MervaneEngine.dll [ROWS COLUMNS EPOCHS ROUNDS]
//
// Ends with 1 where the class takes more than 1.3 times as long, or gives other clusters.

#include <windows.h>
// The component model's headers need the platform's first.
#include <mervane_class3.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <vector>

#include "support/server/server_ids.h"

using Microsoft::WRL::ComPtr;

namespace {

constexpr double mostRatio = 1.3;

void require(HRESULT result, const char* what) {
  if (FAILED(result)) throw std::runtime_error(what);
}

ComPtr<IClassFactory> factoryOf(const char* path, REFCLSID id) {
  using Export = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const HMODULE library = LoadLibraryA(path);
  if (library == nullptr) throw std::runtime_error(path);
  const auto getClass = reinterpret_cast<Export>(reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  require(getClass(id, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())), "a class factory");
  return factory;
}

/// Numbers around four centres, the same in every run.
VARIANT samples(ULONG rows, ULONG columns) {
  SAFEARRAYBOUND bounds[] = {{rows, 1}, {columns, 1}};
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_ARRAY | VT_R8;
  value.parray = SafeArrayCreate(VT_R8, 2, bounds);
  auto* numbers = static_cast<double*>(value.parray->pvData);
  std::uint32_t state = 1;
  for (std::size_t i = 0; i < std::size_t{rows} * columns; ++i) {
    state = state * 1664525U + 1013904223U;
    numbers[i] = static_cast<double>(i % rows % 4) * 10.0 + static_cast<double>(state >> 8) / (1 << 24);
  }
  return value;
}

struct Run {
  double seconds;
  std::vector<LONG> clusters;
};

Run clustered(IClassFactory* classes, const VARIANT& inputs, LONG epochs) {
  ComPtr<_Classifier3> classifier;
  require(classes->CreateInstance(nullptr, mervane::server::defaultInterfaceId,
                                  reinterpret_cast<void**>(classifier.GetAddressOf())),
          "a Classifier3");
  require(classifier->put_Inputs(inputs), "Inputs");
  require(classifier->put_EpochCount(epochs), "EpochCount");
  const auto start = std::chrono::steady_clock::now();
  require(classifier->Run(), "Run");
  Run run{std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), {}};
  SAFEARRAY* outputs = nullptr;
  require(classifier->get_Outputs(&outputs), "Outputs");
  const auto* numbers = static_cast<const LONG*>(outputs->pvData);
  run.clusters.assign(numbers, numbers + outputs->rgsabound[0].cElements);
  SafeArrayDestroy(outputs);
  classifier->UnloadfrmMain();
  return run;
}

int measure(int count, char** words) {
  const auto number = [&](int place, long usual) { return count > place ? std::atol(words[place]) : usual; };
  const ComPtr<IClassFactory> classes = factoryOf(words[1], mervane::server::classId);
  const ComPtr<IClassFactory> engines = factoryOf(words[2], mervane::server::engineClassId);
  VARIANT inputs = samples(static_cast<ULONG>(number(3, 60000)), static_cast<ULONG>(number(4, 10)));
  const LONG epochs = number(5, 100);
  double builtIn = std::numeric_limits<double>::infinity();
  double byClass = builtIn;
  bool same = true;
  for (long round = number(6, 7); round > 0; --round) {
    const Run one = clustered(classes.Get(), inputs, epochs);
    DWORD cookie = 0;
    require(CoRegisterClassObject(mervane::server::engineClassId, engines.Get(), CLSCTX_INPROC_SERVER,
                                  REGCLS_MULTIPLEUSE, &cookie),
            "the engine's class");
    const Run other = clustered(classes.Get(), inputs, epochs);
    CoRevokeClassObject(cookie);
    builtIn = std::min(builtIn, one.seconds);
    byClass = std::min(byClass, other.seconds);
    same = same && one.clusters == other.clusters;
  }
  VariantClear(&inputs);
  std::printf("built in: %.1f ms, by its class: %.1f ms, ratio %.2f (at most %.1f), clusters %s\n", builtIn * 1e3,
              byClass * 1e3, byClass / builtIn, mostRatio, same ? "equal" : "DIFFERENT");
  return same && byClass <= mostRatio * builtIn ? 0 : 1;
}

}  // namespace

int main(int count, char** words) {
  if (count < 3) {
    std::fputs("usage: mervane_engine_class_bench MervaneCls31.dll MervaneEngine.dll [ROWS COLUMNS EPOCHS ROUNDS]\n",
               stderr);
    return 2;
  }
  CoInitialize(nullptr);
  int status = 2;
  try {
    status = measure(count, words);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "cannot be made or used: %s\n", problem.what());
  }
  CoUninitialize();
  return status;
}
