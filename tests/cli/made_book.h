#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/hosts_workbook/fixture.h"

namespace mervane::cli {

/// A workbook with the sheets "Data" and "Totals"; the second one is empty at first.
struct MadeBook {
  /// Rows of cells from A1 on: a number, "#N/A" for an error, "=" and a formula without a value, empty for no cell,
  /// anything else for a text.
  std::vector<std::vector<std::string>> rows;
  /// Elements behind the cells of "Data".
  std::string behindCells;
  std::vector<std::string> comments = {};  ///< cells of "Data" that have one
  std::string totals = "<sheetData/>";     ///< elements of "Totals"
  bool inR1C1 = false;                     ///< whether the workbook is set to R1C1 notation

  void write(const std::filesystem::path& path) const;
};

}  // namespace mervane::cli
