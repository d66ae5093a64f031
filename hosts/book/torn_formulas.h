#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "guard/facts.h"
#include "hosts/book/formula_references.h"

namespace mervane::hosts {

/// Finds formulas and names that would not mean the same cells after a sort of rows.
class TornFormulas {
 public:
  /// Whether the sheets of a reference, as a formula writes them ("Data", "'Jan 1:Dec 1'"), have the sorted one among
  /// them.
  using ReachesSheet = std::function<bool(std::string_view written)>;

  /// @param rows as a run sorts them: the last column is borrowed, and its formulas become values anyway
  /// @param reachesSheet has to last as long as this object
  TornFormulas(const sheet::CellArea& rows, ReachesSheet reachesSheet);

  /// @param sheet name of the formula's sheet
  /// @param isOnSheet whether that is the sorted one
  /// @param formula without its equals sign
  void lookAt(std::string_view sheet, bool isOnSheet, sheet::CellAddress at, std::string_view formula);
  void lookAtName(std::string_view name, std::string_view reference);

  [[nodiscard]] const guard::FormulaList& moved() const noexcept { return moved_; }
  [[nodiscard]] const guard::FormulaList& outside() const noexcept { return outside_; }

 private:
  [[nodiscard]] bool comesApart(const FormulaReference& one, std::int32_t row) const;
  [[nodiscard]] bool namesSomeRows(const FormulaReference& one) const;

  sheet::CellArea rows_;  ///< that move
  std::int32_t borrowed_;
  ReachesSheet reachesSheet_;
  guard::FormulaList moved_;
  guard::FormulaList outside_;
};

}  // namespace mervane::hosts
