#pragma once

#include <windows.h>
// The component model's header needs the platform's first.
#include <oleauto.h>
#include <wrl/client.h>

#include <string>

namespace mervane::server {

/// The type library in this file's own resources.
HRESULT loadTypeLibrary(ITypeLib** library);
/// One of its types by id; the type stays loaded for the thread.
HRESULT typeInfoOf(REFGUID id, ITypeInfo** info);
/// Path of this library's file.
[[nodiscard]] std::wstring modulePath();

}  // namespace mervane::server
