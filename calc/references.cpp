#include "calc/references.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <regex>
#include <set>
#include <string_view>

namespace mervane::addin {

namespace {

using star::table::CellRangeAddress;
using Document = uno::Reference<star::frame::XModel>;
using Sheet = uno::Reference<star::sheet::XSpreadsheet>;

constexpr sal_Int32 lastReferenceColumn = 701;  // ZZ, counted from 0
constexpr sal_Int32 lastReferenceRow = 65534;
constexpr sal_Int32 lastSheetRow = 1048575;

Sheet sheetAt(const Document& document, sal_Int16 position) {
  const uno::Reference<star::sheet::XSpreadsheetDocument> book(document, uno::UNO_QUERY_THROW);
  const uno::Reference<star::container::XIndexAccess> sheets(book->getSheets(), uno::UNO_QUERY_THROW);
  return Sheet(sheets->getByIndex(position), uno::UNO_QUERY_THROW);
}

std::string sheetName(const Document& document, sal_Int16 position) {
  const uno::Reference<star::container::XNamed> named(sheetAt(document, position), uno::UNO_QUERY_THROW);
  return fromOffice(named->getName());
}

/// A name that is more than letters, digits and underscores stands in apostrophes, its own doubled.
std::string quoted(const std::string& name) {
  const bool plain = !name.empty() && std::all_of(name.begin(), name.end(), [](char character) {
    const bool digit = character >= '0' && character <= '9';
    const bool letter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    return digit || letter || character == '_' || static_cast<unsigned char>(character) >= 0x80;
  });
  if (plain && !(name.front() >= '0' && name.front() <= '9')) return name;
  std::string text = "'";
  for (const char character : name) {
    if (character == '\'') text += '\'';
    text += character;
  }
  return text + "'";
}

std::string columnLetters(sal_Int32 column) {
  std::string letters;
  for (sal_Int32 rest = column + 1; rest > 0; rest = (rest - 1) / 26) {
    letters.insert(letters.begin(), static_cast<char>('A' + (rest - 1) % 26));
  }
  return letters;
}

std::string cellText(sal_Int32 column, sal_Int32 row) {
  return columnLetters(column) + std::to_string(row + 1);
}

uno::Reference<star::beans::XPropertySet> converter(const Document& document) {
  const uno::Reference<star::lang::XMultiServiceFactory> factory(document, uno::UNO_QUERY_THROW);
  return uno::Reference<star::beans::XPropertySet>(
      factory->createInstance("com.sun.star.table.CellRangeAddressConversion"), uno::UNO_QUERY_THROW);
}

CellRangeAddress addressOf(const uno::Reference<uno::XInterface>& range) {
  const uno::Reference<star::sheet::XCellRangeAddressable> addressable(range, uno::UNO_QUERY_THROW);
  return addressable->getRangeAddress();
}

std::optional<CellRangeAddress> converted(const Document& document, const char* form, const std::string& text) {
  try {
    const auto conversion = converter(document);
    // A text without a sheet means the one that is shown.
    const uno::Reference<star::sheet::XSpreadsheetView> view(document->getCurrentController(), uno::UNO_QUERY);
    if (view.is()) {
      set(conversion, "ReferenceSheet", uno::Any(static_cast<sal_Int32>(addressOf(view->getActiveSheet()).Sheet)));
    }
    set(conversion, form, uno::Any(toOffice(text)));
    CellRangeAddress range;
    if (conversion->getPropertyValue("Address") >>= range) return range;
  } catch (const uno::Exception&) {
    return std::nullopt;
  }
  return std::nullopt;
}

/// The cells of one range, read at once.
class Cells {
 public:
  Cells(const Document& document, const CellRangeAddress& range) : range_(range) {
    const Sheet sheet = sheetAt(document, range.Sheet);
    const uno::Reference<star::sheet::XCellRangeData> data(
        sheet->getCellRangeByPosition(range.StartColumn, range.StartRow, range.EndColumn, range.EndRow),
        uno::UNO_QUERY_THROW);
    rows_ = data->getDataArray();
  }
  [[nodiscard]] bool isNumber(sal_Int32 column, sal_Int32 row) const {
    const uno::Any& cell = rows_[row - range_.StartRow][column - range_.StartColumn];
    return cell.getValueTypeClass() == uno::TypeClass_DOUBLE;
  }
  [[nodiscard]] std::string text(sal_Int32 column, sal_Int32 row) const {
    rtl::OUString text;
    rows_[row - range_.StartRow][column - range_.StartColumn] >>= text;
    return fromOffice(text);
  }
  [[nodiscard]] const CellRangeAddress& range() const { return range_; }
  [[nodiscard]] bool isNumericColumn(sal_Int32 column, sal_Int32 firstRow, sal_Int32 lastRow) const {
    for (sal_Int32 row = firstRow; row <= lastRow; ++row) {
      if (!isNumber(column, row)) return false;
    }
    return true;
  }

 private:
  CellRangeAddress range_;
  uno::Sequence<uno::Sequence<uno::Any>> rows_;
};

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

EarlierResults earlierResults(const Cells& cells) {
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

/// The block of whole columns of numbers in a range: a heading row is left out, and of the runs of such columns the
/// widest is taken, the leftmost of equals.
std::optional<CellRangeAddress> numbersIn(const Cells& cells, CellRangeAddress range, const EarlierResults& results) {
  range.EndRow = std::min(range.EndRow, results.firstBlockRow - 1);
  for (const sal_Int32 firstRow : {range.StartRow, range.StartRow + 1}) {
    if (firstRow > range.EndRow) break;
    std::optional<CellRangeAddress> best;
    sal_Int32 begin = -1;
    for (sal_Int32 column = range.StartColumn; column <= range.EndColumn + 1; ++column) {
      const bool numeric = column <= range.EndColumn && results.listingColumns.count(column) == 0 &&
                           cells.isNumericColumn(column, firstRow, range.EndRow);
      if (numeric && begin < 0) begin = column;
      if (numeric || begin < 0) continue;
      if (!best || column - begin > best->EndColumn - best->StartColumn + 1) {
        best = CellRangeAddress(range.Sheet, begin, firstRow, column - 1, range.EndRow);
      }
      begin = -1;
    }
    if (best && best->EndRow > best->StartRow) return best;
  }
  return std::nullopt;
}

/// The block of filled cells around a cell.
CellRangeAddress regionAround(const Document& document, const CellRangeAddress& cell) {
  const Sheet sheet = sheetAt(document, cell.Sheet);
  const uno::Reference<star::sheet::XSheetCellRange> start(
      sheet->getCellRangeByPosition(cell.StartColumn, cell.StartRow, cell.EndColumn, cell.EndRow),
      uno::UNO_QUERY_THROW);
  const auto cursor = sheet->createCursorByRange(start);
  cursor->collapseToCurrentRegion();
  return addressOf(cursor);
}

/// The selected part of the used cells, so that whole columns can be selected.
CellRangeAddress confined(const Document& document, CellRangeAddress range) {
  const Sheet sheet = sheetAt(document, range.Sheet);
  const auto cursor = sheet->createCursor();
  const uno::Reference<star::sheet::XUsedAreaCursor> used(cursor, uno::UNO_QUERY_THROW);
  used->gotoEndOfUsedArea(false);
  const CellRangeAddress end = addressOf(cursor);
  range.EndRow = std::clamp(range.EndRow, range.StartRow, std::max(end.EndRow, range.StartRow));
  range.EndColumn = std::clamp(range.EndColumn, range.StartColumn, std::max(end.EndColumn, range.StartColumn));
  return range;
}

/// The sheet part of a reference, without its dollar sign and its apostrophes: what stands before the last exclamation
/// mark, or before the office's own dot. Nothing where there is none.
std::optional<std::string> sheetPart(const std::string& text) {
  const std::size_t begin = text.starts_with('$') ? 1 : 0;
  std::size_t end = text.rfind('!');
  if (end == std::string::npos) {
    const bool isQuoted = text.size() > begin && text[begin] == '\'';
    std::size_t from = begin;
    if (isQuoted) {
      // The closing apostrophe is the one that is not doubled.
      for (from = begin + 1; from < text.size() && (text[from] != '\'' || text.substr(from, 2) == "''"); ++from) {
        if (text[from] == '\'') ++from;
      }
    }
    end = text.find('.', from);
  }
  if (end == std::string::npos || end < begin) return std::nullopt;
  std::string name = text.substr(begin, end - begin);
  if (name.size() > 1 && name.starts_with('\'') && name.ends_with('\'')) {
    name = name.substr(1, name.size() - 2);
    for (std::size_t at = name.find("''"); at != std::string::npos; at = name.find("''", at + 1)) name.erase(at, 1);
  }
  return name;
}

/// The office reads a reference to a sheet that is not there as one without a sheet.
bool namesMissingSheet(const Document& document, const std::string& text) {
  const std::optional<std::string> name = sheetPart(text);
  const uno::Reference<star::sheet::XSpreadsheetDocument> book(document, uno::UNO_QUERY_THROW);
  return name && !book->getSheets()->hasByName(toOffice(*name));
}

/// A range that the user has given a name: a named range, or a database range.
std::optional<CellRangeAddress> namedRange(const Document& document, const std::string& name) {
  const uno::Reference<star::beans::XPropertySet> properties(document, uno::UNO_QUERY_THROW);
  for (const char* kind : {"NamedRanges", "DatabaseRanges"}) {
    const uno::Reference<star::container::XNameAccess> names(
        properties->getPropertyValue(rtl::OUString::createFromAscii(kind)), uno::UNO_QUERY);
    if (!names.is() || !names->hasByName(toOffice(name))) continue;
    const uno::Reference<star::sheet::XCellRangeReferrer> referrer(names->getByName(toOffice(name)), uno::UNO_QUERY);
    // A name may also stand for a formula, which leads to no cells.
    if (referrer.is() && referrer->getReferredCells().is()) return addressOf(referrer->getReferredCells());
  }
  return std::nullopt;
}

/// Whether a text is a reference as the component writes them, letter for letter: one or two letters and digits, once
/// or twice, behind a sheet part or none.
bool isComponentReference(const std::string& text) {
  static const std::regex form(R"((.+!)?[A-Za-z]{1,2}\d+(:[A-Za-z]{1,2}\d+)?)");
  return std::regex_match(text, form);
}

bool isOneCell(const CellRangeAddress& range) {
  return range.StartColumn == range.EndColumn && range.StartRow == range.EndRow;
}

}  // namespace

std::string referenceText(const Document& document, const CellRangeAddress& range) {
  const std::string first =
      quoted(sheetName(document, range.Sheet)) + "!" + cellText(range.StartColumn, range.StartRow);
  return isOneCell(range) ? first : first + ":" + cellText(range.EndColumn, range.EndRow);
}

std::optional<CellRangeAddress> rangeOf(const Document& document, const std::string& text) {
  if (text.empty()) return std::nullopt;
  if (const auto named = namedRange(document, text)) return named;
  if (namesMissingSheet(document, text)) return std::nullopt;
  for (const char* form : {"UserInterfaceRepresentation", "XLA1Representation", "PersistentRepresentation"}) {
    if (const auto range = converted(document, form, text)) return range;
  }
  return std::nullopt;
}

namespace {

/// The first row with numbers and no text, below empty rows and headings; the first of all where there is none.
sal_Int32 firstRowOfNumbers(const Cells& cells) {
  const CellRangeAddress& range = cells.range();
  for (sal_Int32 row = range.StartRow; row <= range.EndRow; ++row) {
    bool holdsText = false;
    bool holdsNumber = false;
    for (sal_Int32 column = range.StartColumn; column <= range.EndColumn; ++column) {
      holdsText = holdsText || !cells.text(column, row).empty();
      holdsNumber = holdsNumber || cells.isNumber(column, row);
    }
    if (holdsNumber && !holdsText) return row;
  }
  return range.StartRow;
}

}  // namespace

std::string componentReference(const Document& document, const std::string& text) {
  const std::size_t begin = text.find_first_not_of(' ');
  if (begin == std::string::npos) return {};
  const std::string reference = text.substr(begin, text.find_last_not_of(' ') - begin + 1);
  if (isComponentReference(reference)) return reference;
  auto range = rangeOf(document, reference);
  if (!range) return reference;
  const bool isWholeColumns = range->StartRow == 0 && range->EndRow == lastSheetRow;
  const bool isWholeRows = range->StartColumn == 0 && range->EndColumn > lastReferenceColumn;
  if (isWholeColumns || isWholeRows) range = confined(document, *range);
  if (isWholeColumns) range->StartRow = firstRowOfNumbers(Cells(document, *range));
  return referenceText(document, *range);
}

std::string pickerText(const Document& document, const CellRangeAddress& range) {
  const auto conversion = converter(document);
  set(conversion, "Address", uno::Any(range));
  rtl::OUString text;
  conversion->getPropertyValue("PersistentRepresentation") >>= text;
  return fromOffice(text);
}

std::optional<Proposal> proposeFromSelection(const Document& document) {
  const uno::Reference<star::sheet::XCellRangeAddressable> selected(document->getCurrentSelection(), uno::UNO_QUERY);
  if (!selected.is()) return std::nullopt;
  const CellRangeAddress range = selected->getRangeAddress();
  CellRangeAddress region = confined(document, regionAround(document, range));
  region.EndRow = std::min(region.EndRow, std::max(lastReferenceRow, region.StartRow));
  CellRangeAddress asked = isOneCell(range) ? region : confined(document, range);
  asked.EndRow = std::min(asked.EndRow, std::max(lastReferenceRow, asked.StartRow));
  const EarlierResults results = earlierResults(Cells(document, region));
  const auto numbers = numbersIn(Cells(document, asked), asked, results);
  if (!numbers) return std::nullopt;
  Proposal proposal{referenceText(document, *numbers), {}};
  // The column right of the inputs takes the labels of the statistics, so one stays free between.
  const sal_Int32 column = std::max(numbers->EndColumn + 2, region.EndColumn + 2);
  if (results.listing) {
    proposal.outputs = referenceText(document, *results.listing);
  } else if (column <= lastReferenceColumn) {
    proposal.outputs =
        referenceText(document, CellRangeAddress(numbers->Sheet, column, numbers->StartRow, column, numbers->StartRow));
  }
  return proposal;
}

}  // namespace mervane::addin
