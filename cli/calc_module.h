#pragma once

#include <memory>
#include <string>

#include "hosts/book/open_book.h"

namespace mervane::cli {

/// Whether the module that brings LibreOffice Calc lies beside the program or among its libraries.
[[nodiscard]] bool hasCalcModule();

/// Opens a file with LibreOffice Calc, which is started without windows and ends with the book. Raises a Problem with
/// the status usage where this program has no such module, and the module's own Failure.
[[nodiscard]] std::unique_ptr<hosts::OpenBook> openWithCalc(const std::string& path);

}  // namespace mervane::cli
