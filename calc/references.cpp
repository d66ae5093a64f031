#include "calc/references.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>

namespace mervane::addin {

namespace {

using star::table::CellRangeAddress;
using Document = uno::Reference<star::frame::XModel>;
using Sheet = uno::Reference<star::sheet::XSpreadsheet>;

constexpr sal_Int32 lastReferenceColumn = 701;  // ZZ, counted from 0
constexpr sal_Int32 lastReferenceRow = 65534;

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

/// The block of whole columns of numbers in a range: a heading row is left out, and of the runs of such columns the
/// widest is taken, the leftmost of equals.
std::optional<CellRangeAddress> numbersIn(const Document& document, CellRangeAddress range) {
  const Cells cells(document, range);
  for (const sal_Int32 firstRow : {range.StartRow, range.StartRow + 1}) {
    if (firstRow > range.EndRow) break;
    std::optional<CellRangeAddress> best;
    sal_Int32 begin = -1;
    for (sal_Int32 column = range.StartColumn; column <= range.EndColumn + 1; ++column) {
      const bool numeric = column <= range.EndColumn && cells.isNumericColumn(column, firstRow, range.EndRow);
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

/// The office reads a reference to a sheet that is not there as one without a sheet.
bool namesMissingSheet(const Document& document, const std::string& text) {
  const std::size_t mark = text.rfind('!');
  if (mark == std::string::npos) return false;
  std::string name = text.substr(0, mark);
  if (name.starts_with('$')) name.erase(0, 1);
  if (name.size() > 1 && name.starts_with('\'') && name.ends_with('\'')) {
    name = name.substr(1, name.size() - 2);
    for (std::size_t at = name.find("''"); at != std::string::npos; at = name.find("''", at + 1)) name.erase(at, 1);
  }
  const uno::Reference<star::sheet::XSpreadsheetDocument> book(document, uno::UNO_QUERY_THROW);
  return !book->getSheets()->hasByName(toOffice(name));
}

bool isR1C1(const Document& document) {
  // The office writes a reference in the notation that the user has chosen; the first cell tells them apart.
  const auto conversion = converter(document);
  set(conversion, "Address", uno::Any(CellRangeAddress(0, 0, 0, 0, 0)));
  rtl::OUString text;
  conversion->getPropertyValue("UserInterfaceRepresentation") >>= text;
  return fromOffice(text).ends_with("R1C1");
}

}  // namespace

std::string referenceText(const Document& document, const CellRangeAddress& range) {
  const bool single = range.StartColumn == range.EndColumn && range.StartRow == range.EndRow;
  const std::string sheet = quoted(sheetName(document, range.Sheet)) + "!";
  if (isR1C1(document)) {
    const auto cell = [](sal_Int32 column, sal_Int32 row) {
      return "R" + std::to_string(row + 1) + "C" + std::to_string(column + 1);
    };
    const std::string first = sheet + cell(range.StartColumn, range.StartRow);
    return single ? first : first + ":" + cell(range.EndColumn, range.EndRow);
  }
  const std::string first = sheet + cellText(range.StartColumn, range.StartRow);
  return single ? first : first + ":" + cellText(range.EndColumn, range.EndRow);
}

std::optional<CellRangeAddress> rangeOf(const Document& document, const std::string& text) {
  if (text.empty() || namesMissingSheet(document, text)) return std::nullopt;
  for (const char* form : {"UserInterfaceRepresentation", "XLA1Representation", "PersistentRepresentation"}) {
    if (const auto range = converted(document, form, text)) return range;
  }
  return std::nullopt;
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
  CellRangeAddress range = selected->getRangeAddress();
  const bool single = range.StartColumn == range.EndColumn && range.StartRow == range.EndRow;
  const CellRangeAddress region = regionAround(document, range);
  range = confined(document, single ? region : range);
  range.EndRow = std::min(range.EndRow, lastReferenceRow);
  const auto numbers = numbersIn(document, range);
  if (!numbers) return std::nullopt;
  Proposal proposal{referenceText(document, *numbers), {}};
  // The column right of the inputs takes the labels of the statistics, so one stays free between.
  const sal_Int32 column = std::max(numbers->EndColumn + 2, region.EndColumn + 2);
  if (column <= lastReferenceColumn) {
    proposal.outputs =
        referenceText(document, CellRangeAddress(numbers->Sheet, column, numbers->StartRow, column, numbers->StartRow));
  }
  return proposal;
}

}  // namespace mervane::addin
