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
    return E_OUTOFMEMORY;
  } catch (const std::exception& unforeseen) {
    return com::report(Failure(static_cast<std::int32_t>(E_UNEXPECTED), unforeseen.what()), interfaceId);
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace mervane::server
