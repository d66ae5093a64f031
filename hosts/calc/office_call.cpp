#include "hosts/calc/office_call.h"

#include <rtl/strbuf.hxx>

namespace mervane::calc {

std::string fromOffice(const rtl::OUString& text) {
  const rtl::OString bytes = rtl::OUStringToOString(text, RTL_TEXTENCODING_UTF8);
  return {bytes.getStr(), static_cast<std::size_t>(bytes.getLength())};
}

rtl::OUString toOffice(std::string_view text) {
  rtl::OUString result;
  constexpr sal_uInt32 strict = RTL_TEXTTOUNICODE_FLAGS_UNDEFINED_ERROR | RTL_TEXTTOUNICODE_FLAGS_MBUNDEFINED_ERROR |
                                RTL_TEXTTOUNICODE_FLAGS_INVALID_ERROR;
  if (!rtl_convertStringToUString(&result.pData, text.data(), static_cast<sal_Int32>(text.size()),
                                  RTL_TEXTENCODING_UTF8, strict)) {
    refuse("The text holds bytes that are no characters.");
  }
  return result;
}

void refuseClosed() {
  refuse("The document has been closed.");
}

void refuseFor(const std::string& action, const uno::Exception& exception) {
  std::string text = "LibreOffice could not " + action;
  std::string reason = fromOffice(exception.Message);
  // Where in its own sources it gave up is of no use to anybody.
  if (const std::size_t place = reason.find("at ./"); place != std::string::npos) reason.erase(place);
  while (reason.ends_with(' ')) reason.pop_back();
  text += reason.empty() ? "." : ": " + reason;
  refuse(text);
}

}  // namespace mervane::calc
