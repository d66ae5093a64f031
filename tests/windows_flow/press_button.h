#pragma once

#include <windows.h>

#include <chrono>
#include <string>

namespace mervane::tests {

/// Waits for a visible window with a button of that text and presses it, as a click does: the window's own thread does
/// the rest. Mnemonic marks in the text do not count.
/// @param process the process whose windows are looked at, 0 for all
/// @return whether such a button came up in time
bool pressButton(const std::wstring& text, DWORD process, std::chrono::seconds limit);

}  // namespace mervane::tests
