#pragma once

#include <memory>
#include <string>

#include "cli/workbook_options.h"
#include "hosts/workbook/workbook_host.h"

namespace mervane::cli {

/// Whether the name ends as workbooks do, those included that are refused: .xlsx, .xlsm, .xls, .xlsb, .ods.
[[nodiscard]] bool isWorkbookName(const std::string& path);

/// Opens the workbook; raises a Problem with the status fileTrouble.
[[nodiscard]] std::unique_ptr<workbook::WorkbookHost> openWorkbook(const std::string& path);

/// Writes the workbook to the target; with --in-place and a suffix a copy of the old file is made first. Raises a
/// Problem with the status fileTrouble.
void saveWorkbook(workbook::WorkbookHost& book, const std::string& target, const std::string& backupSuffix);

}  // namespace mervane::cli
