#include "cli/calc_module.h"
#include "cli/problem.h"

namespace mervane::cli {

bool hasCalcModule() {
  return false;
}

std::unique_ptr<hosts::OpenBook> openWithCalc(const std::string&) {
  throw Problem(ExitStatus::usage, "--host calc: this program is made without LibreOffice",
                "Save the file as .xlsx in the spreadsheet first.");
}

}  // namespace mervane::cli
