#pragma once

#include <cstddef>
#include <functional>

namespace mervane::workbook {

/// Bytes piece by piece: writes at most `size` of them and answers how many, 0 at the end.
using ByteSource = std::function<std::size_t(char* bytes, std::size_t size)>;

/// The same XML as UTF-8. A part may be written in UTF-16 as well, with a byte order mark or without one; its
/// declaration then says UTF-8. All else is passed on as it is. What is no UTF-16 becomes bytes that are no
/// UTF-8 either, so that the reader refuses it.
[[nodiscard]] ByteSource asUtf8(ByteSource source);

}  // namespace mervane::workbook
