#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "hosts/calc/session.h"
#include "mervane/variant.h"

namespace mervane::calc {

/// The cells that were read, column by column.
///
/// OPTIMIZATION: a cell that is not known is read together with those below it, since callers go down columns. Where
/// each formula is read after another cell was written, what was read ahead would be of no use, so that less is read.
class CellReader {
 public:
  explicit CellReader(Session& session) : session_(session) {}

  /// Whether the cell's new value is still waiting; it is not to be read before that is written.
  [[nodiscard]] bool isWaiting(std::int32_t sheet, CellAddress at) const;
  /// @param valuesWait whether values of other cells wait; a formula is not taken from what is known then
  /// @returns nothing where the cell is a formula that the waiting values may change
  [[nodiscard]] std::optional<Variant> value(std::int32_t sheet, CellAddress at, bool valuesWait);

  /// @param isNumber whether a plain number waits. It comes back as one, even from a cell of dates, whose days may
  /// count from another begin, until its place is sorted or gets another number format.
  void markWaiting(std::int32_t sheet, CellAddress at, bool isNumber);
  /// Rows changed places. Plain numbers are still known as such in the key column if nothing else stands there.
  void sorted(std::int32_t sheet, const CellArea& area, std::int32_t keyColumn);
  /// What was written as a plain number there is what its number format says.
  void forgetPlainNumbers(std::int32_t sheet, const CellArea& area);
  /// The area has to be read anew, but for cells that wait.
  void forget(std::int32_t sheet, const CellArea& area) { reset(sheet, area, false); }
  /// What waited in the area has been written.
  void written(std::int32_t sheet, const CellArea& area) { reset(sheet, area, true); }
  /// Values were written somewhere, so that formulas may show others.
  void formulasChanged() { ++generation_; }
  void forgetAll() { columns_.clear(); }

 private:
  static constexpr std::int32_t mostRowsAhead = 8192;
  enum class State : std::uint8_t { unknown, value, formula, waiting };
  struct Column {
    std::vector<Variant> values;  ///< from row 1
    std::vector<State> states;
    std::vector<std::uint64_t> generations;  ///< of formulas: when they were read
    std::vector<bool> arePlain;              ///< what was written as a plain number; may be shorter
    /// Rows to read at once, fewer where values are written between the readings of formulas.
    std::int32_t rowsAhead = mostRowsAhead;
  };
  using Block = std::vector<Variant>;

  [[nodiscard]] static std::uint64_t keyOf(std::int32_t sheet, std::int32_t column) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(sheet)) << 32) | static_cast<std::uint32_t>(column);
  }
  [[nodiscard]] bool arePlain(std::int32_t sheet, const CellArea& cells) const;
  void reset(std::int32_t sheet, const CellArea& area, bool waitingToo);
  [[nodiscard]] bool isKnown(const Column& column, std::size_t row) const;
  void fetch(std::int32_t sheet, CellAddress at, Column& column);
  void takeKinds(std::int32_t sheet, const CellArea& area, const std::vector<State>& states, Block& block);
  void takeConstantKinds(std::int32_t sheet, const CellArea& part, std::int32_t firstRow, Block& block);

  Session& session_;
  std::unordered_map<std::uint64_t, Column> columns_;
  std::uint64_t generation_ = 0;
};

}  // namespace mervane::calc
