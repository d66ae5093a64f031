#pragma once

#include "hosts/workbook/package.h"

namespace mervane::workbook {

class Sheet;

/// The sheet's part, packed: what stood around the cells as it was, the cells as they are now. Formats get the numbers
/// of the save that Styles has begun.
[[nodiscard]] DeflatedContent printSheet(Sheet& sheet);

}  // namespace mervane::workbook
