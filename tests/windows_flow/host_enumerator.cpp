#include "tests/windows_flow/host_enumerator.h"

#include <atomic>

#include "mervane/failure.h"
#include "tests/windows_flow/dispatch_values.h"

namespace mervane::tests {
namespace {

class HostEnumerator final : public IEnumVARIANT {
 public:
  explicit HostEnumerator(sheet::ObjectRef enumerator) : enumerator_(std::move(enumerator)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IEnumVARIANT) return E_NOINTERFACE;
    *object = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* elements, ULONG* fetched) override {
    ULONG done = 0;
    try {
      for (; done < count; ++done) {
        const Variant element = enumerator_->invoke(sheet::Access::call, sheet::member::Next, {});
        if (element.isEmpty()) break;
        elements[done] = toClient(element);
      }
    } catch (const Failure&) {
      return E_FAIL;
    }
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG /*count*/) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** /*copy*/) override { return E_NOTIMPL; }

 private:
  ~HostEnumerator() = default;

  std::atomic<ULONG> references_{1};
  sheet::ObjectRef enumerator_;
};

}  // namespace

IUnknown* wrapEnumerator(sheet::ObjectRef enumerator) {
  return new HostEnumerator(std::move(enumerator));
}

}  // namespace mervane::tests
