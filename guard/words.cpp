#include "guard/words.h"

#include <algorithm>
#include <cstddef>

#include "guard/text_display.h"

namespace mervane::guard {

std::string placeOf(std::string_view sheet, const CellArea& area) {
  return sheet::quotedSheetName(sheet) + "!" + sheet::a1(area);
}

std::string placeOf(std::string_view sheet, CellAddress at) {
  return sheet::quotedSheetName(sheet) + "!" + sheet::a1(at);
}

std::string formulasText(const FormulaList& formulas) {
  std::string text;
  for (const FormulaList::Formula& one : formulas.first) {
    if (!text.empty()) text += ", ";
    text += one.place + " " + quoted(one.text);
  }
  return formulas.count > static_cast<std::int64_t>(formulas.first.size()) ? text + ", ..." : text;
}

std::string cellsText(std::string_view sheet, const CellArea& area, const AreaFacts& facts) {
  constexpr std::size_t most = 5;
  const std::size_t shown = std::min(most, facts.filled.size());
  std::string text = facts.filledCount == 1 ? "1 cell" : std::to_string(facts.filledCount) + " cells";
  text += " of " + placeOf(sheet, area) + ": ";
  for (std::size_t i = 0; i < shown; ++i) {
    text += (i == 0 ? "" : ", ") + sheet::a1(facts.filled[i].at) + " " + quoted(facts.filled[i].text);
  }
  return facts.filledCount > static_cast<std::int64_t>(shown) ? text + ", ..." : text;
}

}  // namespace mervane::guard
