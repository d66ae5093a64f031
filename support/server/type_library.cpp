#include "support/server/type_library.h"

#include "support/server/module.h"

using Microsoft::WRL::ComPtr;

namespace mervane::server {

std::wstring modulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(moduleHandle(), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

HRESULT loadTypeLibrary(ITypeLib** library) {
  return LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, library);
}

HRESULT typeInfoOf(REFGUID id, ITypeInfo** info) {
  ComPtr<ITypeLib> library;
  const HRESULT result = loadTypeLibrary(&library);
  return FAILED(result) ? result : library->GetTypeInfoOfGuid(id, info);
}

}  // namespace mervane::server
