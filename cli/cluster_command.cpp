#include <algorithm>

#include "cli/commands.h"
#include "cli/problem.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

bool endsIn(const std::string& path, std::string_view ending) {
  if (path.size() < ending.size()) return false;
  return std::equal(ending.begin(), ending.end(), path.end() - static_cast<std::ptrdiff_t>(ending.size()),
                    [](char wanted, char c) { return wanted == (c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c); });
}

}  // namespace

ExitStatus cluster(const ClusterOptions& options, Talk& talk) {
  for (const std::string_view ending : {".xlsx", ".xlsm", ".xls", ".xlsb", ".ods"}) {
    if (!endsIn(options.input, ending)) continue;
    throw Problem(ExitStatus::dataRefused, printable(options.input) + " is a workbook, which is not read here",
                  "Save the sheet as a CSV file in UTF-8.");
  }
  return clusterDataFile(options, talk);
}

}  // namespace mervane::cli
