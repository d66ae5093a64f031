#pragma once

#include <windows.h>

#include <string>

namespace mervane::windows {

/// Draws the picture of a key into a square: "classify", "close", "DEFAULTS", "icon", "abort", "retry", "ignore" or
/// "support". An unknown key draws nothing.
void drawPicture(HDC target, const std::string& key, const RECT& square);

}  // namespace mervane::windows
