#include "platform/com/code_page.h"

#include "platform/com/text.h"

namespace mervane::com {

std::string toCodePage(std::string_view text) {
  const std::wstring wide = toWide(text);
  if (wide.empty()) return {};
  const int units = static_cast<int>(wide.size());
  const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), units, result.data(), size, nullptr, nullptr);
  return result;
}

std::string fromCodePage(std::string_view text) {
  if (text.empty()) return {};
  const int bytes = static_cast<int>(text.size());
  const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), size);
  return fromWide(wide);
}

}  // namespace mervane::com
