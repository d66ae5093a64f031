#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/book/unfinished_file.h"
#include "mervane/variant.h"
#include "spreadsheet/cell_address.h"
#include "spreadsheet/object.h"

namespace mervane::hosts {

using sheet::CellAddress;
using sheet::CellArea;

/// A spreadsheet file that a program has open: its object model, and what a program wants to know beside it.
class OpenBook {
 public:
  virtual ~OpenBook() = default;

  /// The Application object; its one open workbook is the file's, the active sheet is the one the file was left on.
  [[nodiscard]] virtual sheet::ObjectRef application() = 0;

  /// Writes the file with its changes, in the format that the name ends in. The target is replaced
  /// in one step, or left as it was after a failure. It may be the file that was opened; saving twice is allowed.
  virtual void save(const std::filesystem::path& target, const UnfinishedFile& unfinished = {}) = 0;

  /// What `sheets` lists.
  struct SheetInfo {
    std::string name;
    bool isActive = false;
    std::optional<CellArea> used;      ///< cells with values; nothing for an empty sheet
    std::vector<std::string> headers;  ///< what the first used row shows, one text a column of the used area
  };
  [[nodiscard]] virtual std::vector<SheetInfo> sheets() = 0;
  [[nodiscard]] virtual std::vector<std::string> sheetNames() const = 0;
  [[nodiscard]] virtual std::string activeSheetName() const = 0;

  /// The cells with values of one sheet. The others are not read for it.
  [[nodiscard]] virtual std::optional<CellArea> usedArea(std::string_view sheet) = 0;

  /// The place that a reference names, in A1 form, with or without a sheet, or a defined name; nothing where it
  /// names none.
  struct Place {
    std::string sheet;
    CellArea area;
  };
  [[nodiscard]] virtual std::optional<Place> find(std::string_view reference) const = 0;

  /// What the cell shows, empty for an empty one. Raises subscriptOutOfRange for an unknown sheet.
  [[nodiscard]] virtual std::string cellText(std::string_view sheet, CellAddress at) = 0;
  /// Its formula with the equals sign, or nothing.
  [[nodiscard]] virtual std::optional<std::string> cellFormula(std::string_view sheet, CellAddress at) = 0;
  /// Its value as Range.Value gives it.
  [[nodiscard]] virtual Variant cellValue(std::string_view sheet, CellAddress at) = 0;
  /// The same, but a formula that was never computed is empty.
  [[nodiscard]] virtual Variant cellValueOrEmpty(std::string_view sheet, CellAddress at) = 0;
  /// The cells of the area that have a comment, which no sort takes along.
  [[nodiscard]] virtual std::vector<CellAddress> commentedCells(std::string_view sheet, const CellArea& area) = 0;
  /// The largest block of nothing but numbers on the sheet, two rows and a column at least, with cells of other kinds
  /// all around it. Nothing where there is none, or where two are equally large.
  [[nodiscard]] virtual std::optional<CellArea> numericBlock(std::string_view sheet) = 0;

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
  /// What was done beside writing values, in words: rows that were sorted, charts that went.
  [[nodiscard]] virtual const std::vector<std::string>& notes() const = 0;
};

}  // namespace mervane::hosts
