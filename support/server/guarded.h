#pragma once

#include <windows.h>
// The component model's header needs the platform's first.
#include <oleauto.h>

#include <exception>
#include <new>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "platform/com/failure_conversion.h"

namespace mervane::server {

/// The border to the binary interface: whatever fails inside becomes a code with error information, and nothing is
/// thrown through it.
template <class Body>
HRESULT guarded(REFIID interfaceId, Body&& body) noexcept {
  try {
    body();
    return S_OK;
  } catch (const Failure& failure) {
    return com::report(failure, interfaceId);
  } catch (const std::bad_alloc&) {
    return com::report(E_OUTOFMEMORY, "Out of memory", interfaceId);
  } catch (const std::exception& unforeseen) {
    return com::report(E_UNEXPECTED, unforeseen.what(), interfaceId);
  } catch (...) {
    return com::report(E_UNEXPECTED, "Unexpected failure", interfaceId);
  }
}

/// A null pointer where the call needs a place to read or to write is the caller's mistake, and told as one.
inline HRESULT refusedPointer(REFIID interfaceId) noexcept {
  return com::report(E_POINTER, "A pointer that this call needs is null.", interfaceId);
}

}  // namespace mervane::server
