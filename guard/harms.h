#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "guard/facts.h"
#include "guard/plan.h"

namespace mervane::guard {

/// What a harm is about.
enum class HarmKind {
  inputs,
  listing,
  cells,
  formulas,
  chart,
  filter,
  table,
  pivotTable,
  array,
  merged,
  hidden,
  protection
};

/// What of the plan does the harm, so that one can leave it out.
enum class Piece { oldCharts, sorting, listing, filter, statistics, newCharts };

struct Harm {
  HarmKind kind = HarmKind::cells;
  Piece piece = Piece::listing;
  /// Whether no consent can help: the run would fail, or tear apart what the application itself never tears apart.
  bool isForbidden = false;
  std::string sheet;
  CellArea area;           ///< what is harmed: the chart, the table, or the cells that would be written
  std::int64_t count = 0;  ///< filled cells that would be overwritten
  /// A sentence without a full stop, such as: the statistics would overwrite 2 cells of Data!B8:E22: B8 "Total", C8
  /// "7".
  std::string text;
};

/// All that a run by this plan would remove, overwrite or fail at; empty where it harms nothing. What is forbidden
/// stands first.
[[nodiscard]] std::vector<Harm> harmsOf(const Plan& plan, BookFacts& book);

/// Whether one of them is forbidden.
[[nodiscard]] bool isForbidden(const std::vector<Harm>& harms);

}  // namespace mervane::guard
