#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "cli/problem.h"
#include "cli/target_file.h"
#include "cli/workbook_options.h"
#include "hosts/book/open_book.h"
#include "mervane/failure.h"

namespace mervane::cli {

/// Whether a file's name has the ending, in either case.
[[nodiscard]] bool nameEndsIn(const std::string& path, std::string_view ending);
/// Whether the name ends as workbooks do, those included that not every host opens: .xlsx, .xlsm, .xls, .xlsb, .ods,
/// .fods.
[[nodiscard]] bool isWorkbookName(const std::string& path);

/// Whether LibreOffice Calc is to open the file.
[[nodiscard]] bool isForCalc(const std::string& path, BookHost host);
/// Whether LibreOffice Calc writes files of that name.
[[nodiscard]] bool isOfficeOutput(const std::string& path);
/// Opens the workbook; raises a Problem with the status fileTrouble.
[[nodiscard]] std::unique_ptr<hosts::OpenBook> openWorkbook(const std::string& path, BookHost host);

/// A failure of the workbook as a problem with the status fileTrouble that names the file.
[[nodiscard]] Problem fileTrouble(const std::string& path, const Failure& failure);
/// What reads sheets of the workbook on the program's own behalf. Raises a Problem with the status fileTrouble.
template <class Reading>
decltype(auto) readingWorkbook(const std::string& path, Reading&& reading) {
  try {
    return std::forward<Reading>(reading)();
  } catch (const Failure& failure) {
    throw fileTrouble(path, failure);
  }
}

/// Writes the workbook to the target; with a suffix a copy of the old file is kept, and its name returned. Raises a
/// Problem with the status fileTrouble; then the target is what it was, and no copy is left.
std::string saveWorkbook(hosts::OpenBook& book, const std::string& target, const TargetFile& watched,
                         const std::string& backupSuffix);

}  // namespace mervane::cli
