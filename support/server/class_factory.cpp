#include "support/server/class_factory.h"

#include <new>

#include "support/server/module.h"

namespace mervane::server {

HRESULT ClassFactory::QueryInterface(REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (interfaceId != IID_IUnknown && interfaceId != IID_IClassFactory) return E_NOINTERFACE;
  *object = static_cast<IClassFactory*>(this);
  AddRef();
  return S_OK;
}

ULONG ClassFactory::AddRef() {
  return ++references_;
}

ULONG ClassFactory::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  return create_(interfaceId, object);
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  ModuleLock::lock(lock != FALSE);
  return S_OK;
}

HRESULT classObject(REFCLSID own, ClassFactory::Create create, REFCLSID requested, REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (requested != own) return CLASS_E_CLASSNOTAVAILABLE;
  auto* factory = new (std::nothrow) ClassFactory(create);
  if (factory == nullptr) return E_OUTOFMEMORY;
  const HRESULT result = factory->QueryInterface(interfaceId, object);
  factory->Release();
  return result;
}

}  // namespace mervane::server
