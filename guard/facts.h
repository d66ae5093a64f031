#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "spreadsheet/cell_address.h"

/// What stands on a sheet, as far as a run could harm it.
namespace mervane::guard {

using sheet::CellAddress;
using sheet::CellArea;

/// A chart, picture or any other thing that lies over the cells.
struct Drawing {
  bool isChart = false;
  std::optional<std::string> title;  ///< of a chart that has one
  CellArea covers;
};

struct Table {
  std::string name;
  CellArea area;  ///< headings and totals included
  bool hasHeader = true;
  bool hasTotals = false;
  bool hasArrows = false;  ///< filter arrows of its own
};

struct PivotTable {
  std::string name;
  CellArea area;  ///< with the fields above it
};

/// The filter of the sheet itself.
struct Filter {
  CellArea area;
  bool hasCriteria = false;  ///< so that it may hide rows
};

/// What a protected sheet still allows; one that is not protected allows everything.
struct Protection {
  bool allowsSorting = true;
  bool allowsFormats = true;
  bool allowsColumnWidths = true;
  bool allowsFilters = true;
  bool allowsCharts = true;
};

struct SheetFacts {
  std::optional<CellArea> used;  ///< cells with values
  std::vector<Drawing> drawings;
  std::vector<Table> tables;
  std::vector<PivotTable> pivotTables;
  std::optional<Filter> filter;
  Protection protection;
};

struct HeldCell {
  CellAddress at;
  std::string text;  ///< what the cell shows
};

/// What one area of a sheet holds.
struct AreaFacts {
  std::int64_t filledCount = 0;  ///< cells with a value or a formula
  std::vector<HeldCell> filled;  ///< the first of them by row and column, at most `mostFilled`
  static constexpr std::size_t mostFilled = 20;

  std::optional<CellAddress> formula;         ///< the first one
  std::optional<CellAddress> unknownFormula;  ///< the first one whose value nobody has computed
  std::optional<CellAddress> equalsText;      ///< the first text that begins with an equals sign and is no formula
  std::optional<CellAddress> locked;          ///< the first locked cell, where the sheet is protected
  std::vector<CellArea> merged;               ///< merged areas that meet the area
  std::vector<CellArea> arrays;               ///< array formulas of several cells that meet it
};

/// Formulas and names, with the first of them by name.
struct FormulaList {
  struct Formula {
    std::string place;  ///< "Data!B5", "the name Best"
    std::string text;   ///< with its equals sign
  };
  std::int64_t count = 0;
  std::vector<Formula> first;  ///< at most `mostNamed`
  static constexpr std::size_t mostNamed = 3;

  void add(Formula formula) {
    if (++count <= static_cast<std::int64_t>(mostNamed)) first.push_back(std::move(formula));
  }
};

/// What a sort of rows would stop at or tear apart.
struct SortingFacts {
  std::optional<std::int32_t> hiddenRow;  ///< the first one, where the sort does not move rows that are hidden
  FormulaList moved;    ///< on the rows, and naming cells of other rows: they name others when they have moved
  FormulaList outside;  ///< elsewhere, and naming some of the rows: other rows come there
};

/// What the rules ask of a workbook. Sheets are named; an unknown name raises subscriptOutOfRange.
class BookFacts {
 public:
  virtual ~BookFacts() = default;
  [[nodiscard]] virtual SheetFacts sheetFacts(std::string_view sheet) = 0;
  [[nodiscard]] virtual AreaFacts areaFacts(std::string_view sheet, const CellArea& area) = 0;
  /// @param rows what is sorted; the last column of it is borrowed for the sort.
  [[nodiscard]] virtual SortingFacts sortingFacts(std::string_view sheet, const CellArea& rows) = 0;
};

}  // namespace mervane::guard
