#pragma once

#include <cstdint>

#include "mervane/variant.h"
#include "spreadsheet/object.h"

namespace mervane::workbook {

class Book;

/// The objects above the cells: Application, its one Workbook, the Worksheets and each Worksheet.
[[nodiscard]] sheet::ObjectRef makeApplication(Book& book);
[[nodiscard]] Variant makeWorksheet(Book& book, std::int32_t position);

}  // namespace mervane::workbook
