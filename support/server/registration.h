#pragma once

#include <windows.h>

namespace mervane::server {

/// One in-process class as the registry knows it.
struct RegisteredClass {
  GUID id;
  const wchar_t* name;         ///< name for creation by name
  const wchar_t* description;  ///< shown by tools
  bool hasTypeLibrary;
  bool yieldsToOthers;  ///< where another maker's library serves the class, that
                        ///< one stays
};

/// Writes the class, its name, this library's path with apartment threading
/// and, where there is one, the type library with its interfaces: for the whole
/// machine where the process may, for the present user otherwise. S_FALSE, and
/// nothing written, where the class yields to another maker's.
HRESULT registerClass(const RegisteredClass& entry);
/// Removes what leads to this file, in both places: another folder's
/// registration stays, and so does what both widths share while the other one
/// stands. What is not there is no failure; what cannot be removed is one, told
/// once everything else is gone.
HRESULT unregisterClass(const RegisteredClass& entry);

}  // namespace mervane::server
