#include "hosts/workbook/case_fold.h"

#include <utf8proc.h>

#include <cstdlib>
#include <memory>

namespace mervane::workbook {

std::string caseFolded(std::string_view text) {
  utf8proc_uint8_t* folded = nullptr;
  constexpr auto options = static_cast<utf8proc_option_t>(UTF8PROC_CASEFOLD | UTF8PROC_COMPOSE | UTF8PROC_STABLE);
  const utf8proc_ssize_t length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                               static_cast<utf8proc_ssize_t>(text.size()), &folded, options);
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(folded, &std::free);
  if (length < 0) return std::string(text);
  return {reinterpret_cast<const char*>(folded), static_cast<std::size_t>(length)};
}

}  // namespace mervane::workbook
