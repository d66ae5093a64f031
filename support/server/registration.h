#pragma once

#include <windows.h>

namespace mervane::server {

/// One in-process class as the registry knows it.
struct RegisteredClass {
  GUID id;
  const wchar_t* name;         ///< name for creation by name
  const wchar_t* description;  ///< shown by tools
  bool hasTypeLibrary;
};

/// Writes the class, its name, this library's path with apartment threading and, where there is one, the type library
/// with its interfaces: for the whole machine where the process may, for the present user otherwise.
HRESULT registerClass(const RegisteredClass& entry);
/// Removes what registerClass wrote, in both places. What is not there is no failure; what cannot be removed is one,
/// told once everything else is gone.
HRESULT unregisterClass(const RegisteredClass& entry);

}  // namespace mervane::server
