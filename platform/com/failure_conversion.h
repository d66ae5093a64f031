#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include "mervane/failure.h"

namespace mervane::com {

/// A failed call of the platform as a Failure: the thread's error information where the object left some (and clears
/// it), else the platform's own text for the code.
/// @param source object that failed, to ask whether its error information counts; may be null.
[[nodiscard]] Failure failureOf(HRESULT result, IUnknown* source, REFIID interfaceId);
/// A failed Invoke as a Failure; frees the texts of the record.
[[nodiscard]] Failure failureOf(HRESULT result, EXCEPINFO& exception);

/// The code under which a failure crosses the binary interface: run-time numbers become 0x800A...., others stay.
[[nodiscard]] HRESULT resultOf(const Failure& failure) noexcept;
/// Leaves number, description and source for the caller of the binary interface and answers the code. Never raises.
HRESULT report(const Failure& failure, REFIID interfaceId) noexcept;
/// The same with a text of the program's own in ASCII, for what is met where there may be no memory left.
HRESULT report(HRESULT result, const char* description, REFIID interfaceId) noexcept;

}  // namespace mervane::com
