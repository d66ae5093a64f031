#include "hosts/workbook/sorting_facts.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/workbook/book.h"
#include "hosts/workbook/formula_references.h"
#include "hosts/workbook/package.h"
#include "hosts/workbook/sheet.h"
#include "mervane/failure.h"

namespace mervane::workbook {

namespace {

using Form = FormulaReference::Form;

/// Whether a sheet may name cells of another one: only then there is an exclamation mark somewhere in its part.
bool mayNameOtherSheets(const Package& package, const std::string& part) {
  const auto pull = package.pull(part);
  std::array<char, 65536> piece{};
  for (std::size_t size = pull(piece.data(), piece.size()); size > 0; size = pull(piece.data(), piece.size())) {
    if (std::string_view(piece.data(), size).find('!') != std::string_view::npos) return true;
  }
  return false;
}

class Search {
 public:
  Search(Book& book, Sheet& sorted, const CellArea& rows) : book_(book), sorted_(sorted), moved_(rows) {
    borrowed_ = moved_.lastColumn--;
  }

  guard::SortingFacts facts() {
    findHiddenRow();
    lookThrough(sorted_);
    for (std::int32_t position = 0; position < book_.sheetCount(); ++position) {
      if (Sheet& sheet = book_.sheet(position); &sheet != &sorted_) lookThroughOther(sheet);
    }
    lookAtNames();
    return std::move(facts_);
  }

 private:
  void findHiddenRow() {
    for (std::int32_t row = moved_.firstRow; row <= moved_.lastRow && !facts_.hiddenRow; ++row) {
      if (sorted_.geometry().rowHeight(row) <= 0.0) facts_.hiddenRow = row;
    }
  }

  void lookThroughOther(Sheet& sheet) {
    try {
      if (sheet.isLoaded() || mayNameOtherSheets(book_.package(), sheet.part())) lookThrough(sheet);
    } catch (const Failure&) {
      // NB: a damaged sheet is none of the run's business.
    }
  }

  void lookThrough(Sheet& sheet) {
    if (sheet.cells().formulas.empty()) return;
    sheet.separateFormulas();
    const CellStore& cells = sheet.cells();
    cells.forEachRowWithCells([&](std::int32_t row, const Row&, std::span<const CellStore::PlacedCell> placed) {
      for (const auto& [column, cell] : placed) {
        if (cell->kind == CellKind::formula) lookAt(sheet, {row, column}, cells.formulaOf(*cell).text);
      }
    });
  }

  void lookAt(Sheet& sheet, CellAddress at, const std::string& formula) {
    const bool isOnSheet = &sheet == &sorted_;
    const bool isOnRows = isOnSheet && at.row >= moved_.firstRow && at.row <= moved_.lastRow;
    if (isOnRows && at.column == borrowed_) return;
    const bool isMoved = isOnRows && at.column < borrowed_;
    for (const FormulaReference& one : referencesIn(formula)) {
      const bool isOwnSheet = one.sheet.empty() ? isOnSheet : reachesSortedSheet(one.sheet);
      if (isMoved ? !comesApart(one, at.row)
                  : !(isOwnSheet && namesSomeRows(one) && !(isOnRows && isOnRow(one, at.row))))
        continue;
      (isMoved ? facts_.moved : facts_.outside).add({sheet.place(at), "=" + formula});
      return;
    }
  }

  static bool isOnRow(const FormulaReference& one, std::int32_t row) {
    return one.form != Form::columns && one.topRow() == row && one.bottomRow() == row;
  }

  /// Whether a reference of a formula that moves means other cells afterwards. Those of the own row go with it.
  [[nodiscard]] bool comesApart(const FormulaReference& one, std::int32_t row) const {
    if (!one.sheet.empty() && !isSheet(one.sheet, sorted_.name())) return false;
    if (one.form == Form::columns) return false;
    if (one.first.fixedRow && one.second.fixedRow) return namesSomeRows(one);
    return !isOnRow(one, row) || one.first.fixedRow || one.second.fixedRow;
  }

  /// Whether it reaches some of the cells that move, but not all rows of them.
  [[nodiscard]] bool namesSomeRows(const FormulaReference& one) const {
    const CellArea area{one.topRow(), one.leftColumn(), one.bottomRow(), one.rightColumn()};
    return area.meets(moved_) && (area.firstRow > moved_.firstRow || area.lastRow < moved_.lastRow);
  }

  /// Whether the sheets of a reference, "Data" or "Jan:Dec", have the sorted one among them.
  [[nodiscard]] bool reachesSortedSheet(std::string_view written) const {
    const std::optional<ReferenceText> reference = parseReference(std::string(written) + "!A1");
    if (!reference) return false;
    const std::size_t colon = reference->sheet.find(':');
    const auto tab = [&](std::string_view name) {
      const std::optional<std::int32_t> position = book_.sheetNamed(name);
      return position ? std::optional(book_.sheet(*position).tabPosition()) : std::nullopt;
    };
    const auto first = tab(std::string_view(reference->sheet).substr(0, colon));
    const auto last = colon == std::string::npos ? first : tab(std::string_view(reference->sheet).substr(colon + 1));
    return first && last && *first <= sorted_.tabPosition() && sorted_.tabPosition() <= *last;
  }

  void lookAtNames() {
    for (const Book::DefinedName& name : book_.names()) {
      if (name.name.starts_with("_xlnm.")) continue;  // filters and areas to print
      for (const FormulaReference& one : referencesIn(name.reference)) {
        // What is not fixed depends on where the name is used.
        const bool isFixed = one.form == Form::columns || (one.first.fixedRow && one.second.fixedRow);
        if (!isFixed || !reachesSortedSheet(one.sheet) || !namesSomeRows(one)) continue;
        facts_.outside.add({"the name " + name.name, "=" + name.reference});
        break;
      }
    }
  }

  Book& book_;
  Sheet& sorted_;
  CellArea moved_;
  std::int32_t borrowed_;
  guard::SortingFacts facts_;
};

}  // namespace

guard::SortingFacts sortingFacts(Book& book, Sheet& sheet, const CellArea& rows) {
  return Search(book, sheet, rows).facts();
}

}  // namespace mervane::workbook
