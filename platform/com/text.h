#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include <string>
#include <string_view>

namespace mervane::com {

/// The platform's text of automation; null reads as the empty text.
[[nodiscard]] std::string fromBstr(BSTR text);
/// A new text that the caller frees with SysFreeString. Raises outOfMemory.
[[nodiscard]] BSTR newBstr(std::string_view text);
/// For calls that take a zero-terminated wide text.
[[nodiscard]] std::wstring toWide(std::string_view text);
[[nodiscard]] std::string fromWide(std::wstring_view text);

}  // namespace mervane::com
