#pragma once

#include <algorithm>
#include <map>
#include <string>

#include "guard/facts.h"
#include "guard/plan.h"

namespace mervane::guard {

/// Sheets as a test wants them.
struct MadeBook final : BookFacts {
  struct Cell {
    std::string text;
    bool isFormula = false;
    bool isComputed = true;
  };
  struct Sheet {
    SheetFacts facts;
    std::map<CellAddress, Cell> cells;
    std::vector<CellArea> merged;
    std::vector<CellArea> arrays;
    std::vector<CellArea> locked;
    SortingFacts sorting;
  };
  std::map<std::string, Sheet, std::less<>> sheets;

  Sheet& data() { return sheets["Data"]; }

  SheetFacts sheetFacts(std::string_view sheet) override {
    const Sheet& found = sheets.find(sheet)->second;
    SheetFacts facts = found.facts;
    for (const auto& [at, cell] : found.cells) {
      if (!facts.used) facts.used = CellArea{at.row, at.column, at.row, at.column};
      facts.used->lastRow = std::max(facts.used->lastRow, at.row);
      facts.used->lastColumn = std::max(facts.used->lastColumn, at.column);
    }
    return facts;
  }
  AreaFacts areaFacts(std::string_view sheet, const CellArea& area) override {
    const Sheet& found = sheets.find(sheet)->second;
    AreaFacts facts;
    for (const auto& [at, cell] : found.cells) {
      if (!area.contains(at)) continue;
      if (!cell.text.empty()) {
        ++facts.filledCount;
        if (facts.filled.size() < AreaFacts::mostFilled) facts.filled.push_back({at, cell.text});
      }
      if (cell.isFormula && !facts.formula) facts.formula = at;
      if (cell.isFormula && !cell.isComputed && !facts.unknownFormula) facts.unknownFormula = at;
      if (!cell.isFormula && cell.text.starts_with('=') && !facts.equalsText) facts.equalsText = at;
    }
    for (const CellArea& merged : found.merged) {
      if (merged.meets(area)) facts.merged.push_back(merged);
    }
    for (const CellArea& locked : found.locked) {
      if (!locked.meets(area) || facts.locked) continue;
      facts.locked = {std::max(locked.firstRow, area.firstRow), std::max(locked.firstColumn, area.firstColumn)};
    }
    for (const CellArea& array : found.arrays) {
      if (array.meets(area)) facts.arrays.push_back(array);
    }
    return facts;
  }
  int sortingLooks = 0;  ///< how often the formulas were looked through
  SortingFacts sortingFacts(std::string_view sheet, const CellArea&) override {
    ++sortingLooks;
    return sheets.find(sheet)->second.sorting;
  }
};

/// Six rows of two columns of numbers in B2:C7 of "Data" under headings; the listing goes to F2.
inline MadeBook numbersInBAndC() {
  MadeBook book;
  for (std::int32_t row = 1; row <= 7; ++row) {
    for (std::int32_t column = 2; column <= 3; ++column) book.data().cells[{row, column}] = {row == 1 ? "x" : "1"};
  }
  return book;
}
inline Plan planForThem() {
  Plan plan;
  plan.inputSheet = plan.outputSheet = "Data";
  plan.inputs = {2, 2, 7, 3};
  plan.outputs = {2, 6};
  plan.clusters = 2;
  return plan;
}

}  // namespace mervane::guard
