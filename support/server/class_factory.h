#pragma once

#include <windows.h>
// The component model's header needs the platform's first.
#include <unknwn.h>

#include <atomic>

namespace mervane::server {

/// Makes objects of one class by a function. Counted references keep it alive; locks on it keep the library loaded.
class ClassFactory : public IClassFactory {
 public:
  using Create = HRESULT (*)(REFIID interfaceId, void** object);
  explicit ClassFactory(Create create) : create_(create) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  virtual ~ClassFactory() = default;

  Create create_;
  std::atomic<ULONG> references_{1};
};

/// What a library of one class answers to the call for a factory.
/// @param create makes objects of that class, `own`; there is no other.
HRESULT classObject(REFCLSID own, ClassFactory::Create create, REFCLSID requested, REFIID interfaceId, void** object);

}  // namespace mervane::server
