// Clusters twelve measured plants by the length and width of a petal, and follows the training on its way.
// A client of the component model: it knows the class by its name and the interfaces from the type library's header.
// From the package: x86_64-w64-mingw32-g++ -std=c++20 -static -Iinclude cluster_array.cpp -lole32 -loleaut32 -luuid

#include <windows.h>
// The component model's headers need the platform's first.
#include <ocidl.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <cstdio>

#include "mervane_class3.h"

using Microsoft::WRL::ComPtr;

namespace {

constexpr double petals[][2] = {{1.4, 0.2}, {4.7, 1.4}, {5.9, 2.1}, {1.3, 0.2}, {4.5, 1.5}, {6.0, 2.5},
                                {1.5, 0.3}, {4.0, 1.3}, {5.6, 1.8}, {1.7, 0.4}, {4.6, 1.5}, {6.6, 2.1}};
constexpr LONG rows = 12;
constexpr LONG columns = 2;
constexpr DISPID nextEpoch = 1;
// The ids of the interfaces, as the type library has them.
constexpr IID classifierInterface = {0xFB74062B, 0x30F4, 0x49F4, {0x93, 0xE3, 0xF6, 0xFD, 0xE8, 0xA0, 0x71, 0xAF}};
constexpr IID eventInterface = {0xB394FB57, 0xD919, 0x4EFF, {0xB6, 0x06, 0x8B, 0x2B, 0xDA, 0x0F, 0xE9, 0x22}};

/// Receives the events. It lives on the stack of main, longer than its connection, so its count is of no use.
class EpochSink final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IDispatch && id != eventInterface) return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    if (id != nextEpoch || arguments->cArgs != 3) return DISP_E_MEMBERNOTFOUND;
    // The last argument comes first. All are passed by reference: a sink may also write them.
    const LONG epoch = *arguments->rgvarg[2].plVal;
    const double rate = *arguments->rgvarg[1].pdblVal;
    const LONG radius = *arguments->rgvarg[0].plVal;
    if (epoch % 20 == 0) std::printf("epoch %ld: rate %.3f, radius %ld\n", epoch, rate, radius);
    return S_OK;
  }
};

/// A failed call with its description, where the object left one.
bool good(HRESULT result, const char* what) {
  if (SUCCEEDED(result)) return true;
  ComPtr<IErrorInfo> info;
  BSTR description = nullptr;
  if (GetErrorInfo(0, &info) == S_OK) info->GetDescription(&description);
  std::fprintf(stderr, "%s: 0x%08lX %ls\n", what, static_cast<unsigned long>(result),
               description != nullptr ? description : L"");
  SysFreeString(description);
  return false;
}

/// Any bounds will do; the numbers that come back have those of the rows.
VARIANT measurements() {
  SAFEARRAYBOUND bounds[] = {{rows, 1}, {columns, 1}};
  VARIANT value;
  VariantInit(&value);
  value.parray = SafeArrayCreate(VT_R8, 2, bounds);
  value.vt = VT_ARRAY | VT_R8;
  for (LONG row = 1; row <= rows; ++row) {
    for (LONG column = 1; column <= columns; ++column) {
      LONG place[] = {row, column};
      double number = petals[row - 1][column - 1];
      SafeArrayPutElement(value.parray, place, &number);
    }
  }
  return value;
}

bool print(_Classifier3* classifier) {
  SAFEARRAY* clusters = nullptr;
  if (!good(classifier->get_Outputs(&clusters), "Outputs")) return false;
  LONG first = 0;
  LONG last = -1;
  SafeArrayGetLBound(clusters, 1, &first);
  SafeArrayGetUBound(clusters, 1, &last);
  for (LONG row = first; row <= last; ++row) {
    LONG cluster = 0;
    SafeArrayGetElement(clusters, &row, &cluster);
    std::printf("row %ld (%.1f, %.1f): cluster %ld\n", row, petals[row - 1][0], petals[row - 1][1], cluster);
  }
  SafeArrayDestroy(clusters);
  return true;
}

bool clusterThem() {
  CLSID id{};
  ComPtr<_Classifier3> classifier;
  if (!good(CLSIDFromProgID(L"MervaneClass3.Classifier3", &id), "the class is not registered") ||
      !good(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, classifierInterface,
                             reinterpret_cast<void**>(classifier.GetAddressOf())),
            "creating")) {
    return false;
  }

  EpochSink sink;
  DWORD connection = 0;
  ComPtr<IConnectionPointContainer> container;
  ComPtr<IConnectionPoint> point;
  bool done = good(classifier.As(&container), "events") &&
              good(container->FindConnectionPoint(eventInterface, &point), "events") &&
              good(point->Advise(&sink, &connection), "events") && good(classifier->put_Clusters(3), "Clusters") &&
              good(classifier->put_EpochCount(100), "EpochCount");

  VARIANT inputs = measurements();
  done = done && good(classifier->put_Inputs(inputs), "Inputs") && good(classifier->Run(), "Run") &&
         print(classifier.Get());
  VariantClear(&inputs);
  if (connection != 0) point->Unadvise(connection);
  // The classifier and its dialog hold each other until this.
  classifier->UnloadfrmMain();
  return done;
}

}  // namespace

int main() {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  const bool done = clusterThem();
  CoUninitialize();
  return done ? 0 : 1;
}
