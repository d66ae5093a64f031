#pragma once

#include <cstdint>
#include <memory>

#include "mervane/variant.h"
#include "spreadsheet/object.h"

namespace mervane::calc {

class Session;

/// The objects above the cells: Application, its Workbook, the Worksheets and each Worksheet.
[[nodiscard]] sheet::ObjectRef makeApplication(std::shared_ptr<Session> session);
[[nodiscard]] Variant makeWorksheet(std::shared_ptr<Session> session, std::int32_t position);

}  // namespace mervane::calc
