#include "hosts/calc/sorting_facts.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XNamedRange.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/book/torn_formulas.h"
#include "hosts/calc/formula_notation.h"
#include "hosts/calc/sheet_facts.h"

namespace mervane::calc {

namespace {

class Search {
 public:
  Search(Session& session, const SheetArea& rows)
      : session_(session), sorted_(rows.sheet), formulas_(rows.area, [this](std::string_view written) {
          const auto reference = mervane::sheet::parseReference(std::string(written) + "!A1");
          return reference && session_.sheetNamed(reference->sheet) == sorted_;
        }) {}
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  guard::SortingFacts facts() {
    for (std::int32_t sheet = 0; sheet < session_.sheetCount(); ++sheet) {
      for (const CellArea& area : session_.facts().formulas(sheet)) lookThrough({sheet, area});
    }
    lookAtNames(session_.model());
    for (std::int32_t sheet = 0; sheet < session_.sheetCount(); ++sheet) lookAtNames(session_.sheetAt(sheet));
    return {std::nullopt, formulas_.moved(), formulas_.outside()};
  }

 private:
  [[nodiscard]] std::string marked(std::string_view formula) const {
    return withMarkedSheets(formula, [&](std::string_view name) { return session_.sheetNamed(name).has_value(); });
  }

  void lookThrough(const SheetArea& area) {
    const uno::Reference<css::sheet::XCellRangeFormula> range(session_.rangeOf(area), uno::UNO_QUERY_THROW);
    CellAddress at{area.area.firstRow, area.area.firstColumn};
    for (const auto& row : range->getFormulaArray()) {
      at.column = area.area.firstColumn;
      for (const rtl::OUString& cell : row) {
        std::string formula = fromOffice(cell);
        // An array formula stands in braces.
        if (formula.starts_with('{') && formula.ends_with('}')) formula = formula.substr(1, formula.size() - 2);
        if (formula.starts_with('=')) {
          formulas_.lookAt(session_.sheetName(area.sheet), area.sheet == sorted_, at,
                           marked(std::string_view(formula).substr(1)));
        }
        ++at.column;
      }
      ++at.row;
    }
  }

  void lookAtNames(const uno::Reference<uno::XInterface>& owner) {
    const uno::Reference<css::beans::XPropertySet> properties(owner, uno::UNO_QUERY_THROW);
    const uno::Reference<css::container::XNameAccess> names(properties->getPropertyValue("NamedRanges"),
                                                            uno::UNO_QUERY_THROW);
    for (const rtl::OUString& name : names->getElementNames()) {
      const uno::Reference<css::sheet::XNamedRange> range(names->getByName(name), uno::UNO_QUERY);
      if (range.is()) formulas_.lookAtName(fromOffice(name), marked(fromOffice(range->getContent())));
    }
  }

  Session& session_;
  std::int32_t sorted_;
  hosts::TornFormulas formulas_;
};

}  // namespace

guard::SortingFacts sortingFacts(Session& session, const SheetArea& rows) {
  return Search(session, rows).facts();
}

}  // namespace mervane::calc
