#include "hosts/workbook/sorting_facts.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/book/torn_formulas.h"
#include "hosts/workbook/book.h"
#include "hosts/workbook/package.h"
#include "hosts/workbook/sheet.h"
#include "mervane/failure.h"

namespace mervane::workbook {

namespace {

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
  Search(Book& book, Sheet& sorted, const CellArea& rows)
      : book_(book),
        sorted_(sorted),
        rows_(rows),
        formulas_(rows, [this](std::string_view written) { return reachesSortedSheet(written); }) {}
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  guard::SortingFacts facts() {
    lookThrough(sorted_);
    for (std::int32_t position = 0; position < book_.sheetCount(); ++position) {
      if (Sheet& sheet = book_.sheet(position); &sheet != &sorted_) lookThroughOther(sheet);
    }
    for (const Book::DefinedName& name : book_.names()) {
      const bool isBuiltIn = name.name.starts_with("_xlnm.");  // filters and areas to print
      if (!isBuiltIn) formulas_.lookAtName(name.name, name.reference);
    }
    return {hiddenRow(), formulas_.moved(), formulas_.outside()};
  }

 private:
  [[nodiscard]] std::optional<std::int32_t> hiddenRow() const {
    for (std::int32_t row = rows_.firstRow; row <= rows_.lastRow; ++row) {
      if (sorted_.geometry().rowHeight(row) <= 0.0) return row;
    }
    return std::nullopt;
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
        if (cell->kind != CellKind::formula) continue;
        formulas_.lookAt(sheet.name(), &sheet == &sorted_, {row, column}, cells.formulaOf(*cell).text);
      }
    });
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

  Book& book_;
  Sheet& sorted_;
  CellArea rows_;
  hosts::TornFormulas formulas_;
};

}  // namespace

guard::SortingFacts sortingFacts(Book& book, Sheet& sheet, const CellArea& rows) {
  return Search(book, sheet, rows).facts();
}

}  // namespace mervane::workbook
