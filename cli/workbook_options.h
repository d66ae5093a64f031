#pragma once

#include <optional>
#include <string>

namespace mervane::cli {

/// The check boxes of the options dialog that say what a run leaves on the sheet; what is left out stays as the
/// dialog has it.
struct OutputSwitches {
  std::optional<bool> oneColumn;
  std::optional<bool> autofilter;
  std::optional<bool> charts;
  std::optional<bool> averages;
  std::optional<bool> weightedAverages;
  std::optional<bool> minimums;
  std::optional<bool> maximums;
  std::optional<bool> weights;
  std::optional<bool> colors;
  std::optional<bool> sort;
};

/// What opens a workbook.
enum class BookHost {
  byName,    ///< the program itself for .xlsx and .xlsm, LibreOffice Calc for what it alone opens
  workbook,  ///< the program itself
  calc,      ///< LibreOffice Calc
};

/// What `mervane cluster BOOK.xlsx` takes beyond the options of data files.
struct WorkbookOptions {
  std::string inputs;   ///< a reference; empty: the remembered one, or one that is proposed
  std::string outputs;  ///< the same
  OutputSwitches output;
  BookHost host = BookHost::byName;
  bool inPlace = false;
  std::string backupSuffix;  ///< of the copy that --in-place leaves; empty for none
  bool dryRun = false;
  bool yes = false;        ///< takes what is proposed
  bool overwrite = false;  ///< consents to the loss of what the run would remove or overwrite
  bool remembered = false;
};

}  // namespace mervane::cli
