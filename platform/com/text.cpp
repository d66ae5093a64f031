#include "platform/com/text.h"

#include "mervane/runtime_errors.h"
#include "mervane/utf16.h"

namespace mervane::com {

std::string fromBstr(BSTR text) {
  if (text == nullptr) return {};
  return fromWide(std::wstring_view(text, SysStringLen(text)));
}

BSTR newBstr(std::string_view text) {
  const std::wstring wide = toWide(text);
  BSTR result = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (result == nullptr) raise(runtime::outOfMemory);
  return result;
}

std::wstring toWide(std::string_view text) {
  const std::u16string units = toUtf16(text);
  return {units.begin(), units.end()};
}

std::string fromWide(std::wstring_view text) {
  const std::u16string units(text.begin(), text.end());
  return toUtf8(units);
}

}  // namespace mervane::com
