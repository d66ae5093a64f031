#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/workbook/cell_address.h"
#include "spreadsheet/object.h"

namespace mervane::workbook {

/// A workbook file as a spreadsheet in this process. Objects that come from `application()` may be held longer than the
/// host but not be used any more then.
class WorkbookHost {
 public:
  /// Raises fileNotFound, pathFileAccess or applicationDefined with a text that names the file and says what to do.
  [[nodiscard]] static std::unique_ptr<WorkbookHost> open(const std::filesystem::path& path);
  ~WorkbookHost();
  WorkbookHost(const WorkbookHost&) = delete;
  WorkbookHost& operator=(const WorkbookHost&) = delete;

  /// The Application object; its one open workbook is the file's, the active sheet is the one the file was left on.
  [[nodiscard]] sheet::ObjectRef application();

  /// Writes the file with its changes: parts that nothing changed stay byte for byte. The target is replaced
  /// in one step, or left as it was after a failure. It may be the file that was opened; saving twice is allowed.
  void save(const std::filesystem::path& target);

  /// What `sheets` lists.
  struct SheetInfo {
    std::string name;
    bool isActive = false;
    std::optional<CellArea> used;      ///< cells with values; nothing for an empty sheet
    std::vector<std::string> headers;  ///< what the first used row shows, one text a column of the used area
  };
  [[nodiscard]] std::vector<SheetInfo> sheets();
  [[nodiscard]] std::vector<std::string> sheetNames() const;
  [[nodiscard]] std::string activeSheetName() const;

  /// The place that a reference names, in A1 form, with or without a sheet, or a defined name; nothing where it
  /// names none.
  struct Place {
    std::string sheet;
    CellArea area;
  };
  [[nodiscard]] std::optional<Place> find(std::string_view reference) const;

  /// What the cell shows, empty for an empty one. Raises subscriptOutOfRange for an unknown sheet.
  [[nodiscard]] std::string cellText(std::string_view sheet, CellAddress at);
  /// Its formula with the equals sign, or nothing.
  [[nodiscard]] std::optional<std::string> cellFormula(std::string_view sheet, CellAddress at);
  /// Its value as Range.Value gives it.
  [[nodiscard]] Variant cellValue(std::string_view sheet, CellAddress at);
  /// The largest block of nothing but numbers on the sheet, two rows and a column at least, with cells of other kinds
  /// all around it. Nothing where there is none, or where two are equally large.
  [[nodiscard]] std::optional<CellArea> numericBlock(std::string_view sheet);

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
  [[nodiscard]] std::vector<WrittenBlock> written();
  /// What was done beside writing values, in words: rows that were sorted, charts that went.
  [[nodiscard]] const std::vector<std::string>& notes() const;

 private:
  struct Data;
  explicit WorkbookHost(std::unique_ptr<Data> data);
  std::unique_ptr<Data> data_;
};

}  // namespace mervane::workbook
