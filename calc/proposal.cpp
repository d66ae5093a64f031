#include "calc/proposal.h"

#include <algorithm>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <set>
#include <string_view>

#include "calc/border.h"
#include "calc/references.h"
#include "calc/sheet_cells.h"
#include "guard/counting_columns.h"
#include "guard/proposal.h"

namespace mervane::addin {

namespace {

using star::table::CellRangeAddress;
using Document = uno::Reference<star::frame::XModel>;

/// What an earlier run has left in some cells. Its numbers are none to be clustered, and the next run writes over them.
struct EarlierResults {
  /// The first row of the blocks under the data; behind all rows where there are none.
  sal_Int32 firstBlockRow = 0;
  std::set<sal_Int32> listingColumns;
  /// The first cell of the listing.
  std::optional<CellRangeAddress> listing;
};

/// What follows the number in a text such as "Cluster 12 average"; nothing for other texts.
std::optional<std::string> afterClusterNumber(const std::string& text) {
  constexpr std::string_view word = "Cluster ";
  if (!text.starts_with(word)) return std::nullopt;
  std::size_t end = word.size();
  while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
  if (end == word.size()) return std::nullopt;
  return text.substr(end);
}

EarlierResults earlierResults(const SheetCells& cells) {
  const CellRangeAddress& range = cells.range();
  EarlierResults results;
  results.firstBlockRow = range.EndRow + 1;
  for (sal_Int32 row = range.EndRow; row >= range.StartRow; --row) {
    for (sal_Int32 column = range.EndColumn; column >= range.StartColumn; --column) {
      const std::string text = cells.text(column, row);
      if (text.empty()) continue;
      const std::optional<std::string> rest = afterClusterNumber(text);
      if (rest && rest->starts_with(' ')) results.firstBlockRow = row;
      const bool heads = text == "Clusters" || (rest && rest->empty());
      if (!heads || row == range.EndRow || !cells.isNumber(column, row + 1)) continue;
      results.listingColumns.insert(column);
      results.listing = CellRangeAddress(range.Sheet, column, row + 1, column, row + 1);
    }
  }
  return results;
}

/// The block of whole columns of measured numbers in a range below its headings: the largest of those that none, one
/// and two heading rows leave.
std::optional<CellRangeAddress> numbersIn(const SheetCells& cells, const CellRangeAddress& range,
                                          const EarlierResults& results) {
  constexpr sal_Int32 mostHeadings = 2;
  const sal_Int32 lastRow = std::min(range.EndRow, results.firstBlockRow - 1);
  std::optional<sheet::CellArea> best;
  // A block has two rows at least.
  for (sal_Int32 firstRow = range.StartRow; firstRow <= range.StartRow + mostHeadings && firstRow < lastRow;
       ++firstRow) {
    const auto block =
        guard::widestRun({firstRow, range.StartColumn, lastRow, range.EndColumn}, [&](std::int32_t column) {
          return results.listingColumns.count(column) == 0 && cells.isNumericColumn(column, firstRow, lastRow) &&
                 !guard::countsRows(cells.numbers(column, firstRow, lastRow));
        });
    if (block && (!best || block->cells() > best->cells())) best = block;
  }
  if (!best) return std::nullopt;
  return CellRangeAddress(range.Sheet, best->firstColumn, best->firstRow, best->lastColumn, best->lastRow);
}

bool isOneCell(const CellRangeAddress& range) {
  return range.StartColumn == range.EndColumn && range.StartRow == range.EndRow;
}

/// The first column that is free for a listing beside the block that the numbers stand in.
std::optional<sal_Int32> freeColumn(const Document& document, const CellRangeAddress& numbers,
                                    const CellRangeAddress& region, guard::BookFacts& facts) {
  guard::Plan plan;
  plan.inputSheet = sheetName(document, numbers.Sheet);
  plan.inputs = {numbers.StartRow + 1, numbers.StartColumn + 1, numbers.EndRow + 1, numbers.EndColumn + 1};
  const auto free = guard::proposedOutputs(plan, facts);
  if (!free) return std::nullopt;
  // The column right of the inputs takes the labels of the statistics. Where nothing stands beyond it, the listing may
  // follow at once.
  const sal_Int32 nearest = std::max(numbers.EndColumn, region.EndColumn) + 2;
  const sal_Int32 column = free->column - 1;
  return column > nearest + 1 ? column : nearest;
}

}  // namespace

std::optional<Proposal> proposeFromSelection(const Document& document, guard::BookFacts& facts) {
  const uno::Reference<star::sheet::XCellRangeAddressable> selected(document->getCurrentSelection(), uno::UNO_QUERY);
  if (!selected.is()) return std::nullopt;
  const CellRangeAddress range = selected->getRangeAddress();
  CellRangeAddress region = usedPart(document, regionAround(document, range));
  region.EndRow = std::min(region.EndRow, std::max(lastReferenceRow, region.StartRow));
  CellRangeAddress asked = isOneCell(range) ? region : usedPart(document, range);
  asked.EndRow = std::min(asked.EndRow, std::max(lastReferenceRow, asked.StartRow));
  const EarlierResults results = earlierResults(SheetCells(document, region));
  const auto numbers = numbersIn(SheetCells(document, asked), asked, results);
  if (!numbers) return std::nullopt;
  Proposal proposal{referenceText(document, *numbers), {}};
  if (results.listing) {
    proposal.outputs = referenceText(document, *results.listing);
    return proposal;
  }
  std::optional<sal_Int32> column;
  // Without it the dialog opens all the same.
  atBorder([&] { column = freeColumn(document, *numbers, region, facts); });
  if (column && *column <= lastReferenceColumn) {
    proposal.outputs = referenceText(
        document, CellRangeAddress(numbers->Sheet, *column, numbers->StartRow, *column, numbers->StartRow));
  }
  return proposal;
}

}  // namespace mervane::addin
