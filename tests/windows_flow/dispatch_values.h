#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include <span>
#include <vector>

#include "mervane/failure.h"
#include "spreadsheet/object.h"

/// Values on the side of the foreign application: objects that come in are its own again, objects that go out are
/// wrapped.
namespace mervane::tests {

/// By this id a wrapped object gives out what it wraps.
inline constexpr GUID hostDispatchId = {0x4321AD93, 0xA90F, 0x499A, {0x82, 0xF8, 0x25, 0x41, 0x7B, 0x69, 0xD1, 0x7E}};

/// The caller clears the record.
[[nodiscard]] VARIANT toClient(const Variant& value);
/// In the order of the object model, the first one first.
[[nodiscard]] std::vector<Variant> fromClient(const DISPPARAMS& parameters);

/// Fills the record of an exception, where there is one, and answers the code for the caller.
HRESULT tellClient(const Failure& failure, EXCEPINFO* exception);

}  // namespace mervane::tests
