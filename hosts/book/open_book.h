#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "guard/book_cells.h"
#include "guard/facts.h"
#include "hosts/book/save_watch.h"
#include "spreadsheet/object.h"

namespace mervane::hosts {

using sheet::CellAddress;
using sheet::CellArea;

/// A spreadsheet file that a program has open: its object model, what a run could harm in it, and what is written to
/// the file.
class OpenBook : public guard::BookCells, public guard::BookFacts {
 public:
  /// Makes the sheet the active one. Raises subscriptOutOfRange for an unknown sheet.
  virtual void activate(std::string_view sheet) = 0;

  /// The Application object; its one open workbook is the file's, the active sheet is the one the file was left on.
  [[nodiscard]] virtual sheet::ObjectRef application() = 0;

  /// Writes the file with its changes, in the format that the name ends in. The target is replaced
  /// in one step, or left as it was after a failure. It may be the file that was opened; saving twice is allowed.
  virtual void save(const std::filesystem::path& target, const SaveWatch& watch = {}) = 0;

  /// What `sheets` lists.
  struct SheetInfo {
    std::string name;
    bool isActive = false;
    std::optional<CellArea> used;      ///< cells with values; nothing for an empty sheet
    std::vector<std::string> headers;  ///< what the first used row shows, one text a column of the used area
  };
  [[nodiscard]] virtual std::vector<SheetInfo> sheets() = 0;

  /// A block of cells that hold other values than when the file was opened.
  struct WrittenBlock {
    std::string sheet;
    CellArea area;
    struct Overwritten {
      CellAddress at;
      std::string text;  ///< what the cell showed before
    };
    std::vector<Overwritten> overwritten;  ///< the first ones, at most `mostOverwritten`
    std::int64_t overwrittenCount = 0;
  };
  static constexpr std::size_t mostOverwritten = 20;
  /// The blocks written since the file was opened, by sheet and place, for a dry run. Cells that were written and then
  /// got their old value back do not count. A block holds what columns side by side have in common.
  [[nodiscard]] virtual std::vector<WrittenBlock> written() = 0;
  /// What the file cannot keep when it is saved with changes, one sentence without a full stop each: a signature.
  [[nodiscard]] virtual std::vector<std::string> cannotBeKept() const { return {}; }
  /// What was done beside writing values, in words: rows that were sorted, charts that went.
  [[nodiscard]] virtual const std::vector<std::string>& notes() const = 0;
};

}  // namespace mervane::hosts
