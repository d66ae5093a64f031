#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "hosts/calc/session.h"

namespace mervane::calc {

/// What is known of a sheet as a whole, asked of the office once and kept until it may have changed.
class SheetFacts {
 public:
  explicit SheetFacts(const Session& session) : session_(session) {}

  void forget() { facts_.clear(); }
  /// Cells got or lost contents.
  void forgetContents(std::int32_t sheet);
  /// Values that are no formulas have been written; where there was none there is none now.
  void plainValuesWritten(std::int32_t sheet, const CellArea& area);

  /// The corner of the area that holds contents.
  [[nodiscard]] CellAddress end(std::int32_t sheet);
  /// The areas that hold formulas.
  [[nodiscard]] const std::vector<CellArea>& formulas(std::int32_t sheet);
  /// The rows of an area in one column whose cells have notes, from the top down.
  [[nodiscard]] std::vector<std::int32_t> notedRows(const SheetArea& area);
  /// The smallest area that holds all contents; nothing for an empty sheet.
  [[nodiscard]] std::optional<CellArea> used(std::int32_t sheet);
  /// Whether any cell of the area holds something.
  [[nodiscard]] bool isFilled(std::int32_t sheet, const CellArea& area);
  /// The parts of the area that hold something.
  [[nodiscard]] std::vector<CellArea> filledIn(const SheetArea& area);
  /// The areas of merged cells that meet the area; one that begins outside of it too.
  [[nodiscard]] std::vector<CellArea> mergedIn(const SheetArea& area);
  /// The array formulas of several cells that meet the area.
  [[nodiscard]] std::vector<CellArea> arraysIn(const SheetArea& area);
  /// The first locked cell of the area, where its sheet is protected.
  [[nodiscard]] std::optional<CellAddress> firstLocked(const SheetArea& area);
  [[nodiscard]] bool isProtected(std::int32_t sheet);
  [[nodiscard]] bool hasMerged(std::int32_t sheet);

  /// Raises where the cell is locked, covered by merged cells or part of an array formula.
  void requireWritable(std::int32_t sheet, CellAddress at);
  /// Raises on a protected sheet.
  /// @param action such as "changes of formats"
  void requireUnprotected(std::int32_t sheet, const std::string& action);
  /// Raises where cells of the area are merged or part of an array formula, for what moves rows.
  void requireMovable(const SheetArea& area);

 private:
  struct Facts {
    std::optional<bool> isProtected;
    std::optional<bool> hasMerged;
    std::optional<CellAddress> end;
    std::optional<std::vector<CellArea>> formulas;
    std::optional<std::vector<CellArea>> filled;
    std::optional<std::map<std::int32_t, std::set<std::int32_t>>> notes;  ///< rows by column
  };
  [[nodiscard]] Facts& of(std::int32_t sheet) { return facts_[sheet]; }
  [[nodiscard]] std::vector<CellArea> withContents(std::int32_t sheet, sal_Int16 flags) const;
  [[nodiscard]] const std::vector<CellArea>& filled(std::int32_t sheet);
  [[nodiscard]] CellArea mergedAround(std::int32_t sheet, CellAddress at) const;
  [[nodiscard]] CellArea arrayAround(std::int32_t sheet, CellAddress at) const;
  /// Adds the merges that begin in the cells searched and reach into the area.
  void addMerged(const CellArea& search, const SheetArea& area, std::vector<CellArea>& found) const;
  [[nodiscard]] std::optional<CellAddress> lockedIn(const SheetArea& area) const;

  const Session& session_;
  std::map<std::int32_t, Facts> facts_;
};

}  // namespace mervane::calc
