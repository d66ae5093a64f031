#include "calc/references.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <regex>

#include "calc/sheet_cells.h"

namespace mervane::addin {

namespace {

using star::table::CellRangeAddress;
using Document = uno::Reference<star::frame::XModel>;

constexpr sal_Int32 lastSheetRow = 1048575;

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

std::string sheetName(const uno::Reference<star::frame::XModel>& document, sal_Int16 position) {
  const uno::Reference<star::container::XNamed> named(sheetAt(document, position), uno::UNO_QUERY_THROW);
  return fromOffice(named->getName());
}

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
sal_Int32 firstRowOfNumbers(const SheetCells& cells) {
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
  if (isWholeColumns || isWholeRows) range = usedPart(document, *range);
  if (isWholeColumns) range->StartRow = firstRowOfNumbers(SheetCells(document, *range));
  return referenceText(document, *range);
}

std::string pickerText(const Document& document, const CellRangeAddress& range) {
  const auto conversion = converter(document);
  set(conversion, "Address", uno::Any(range));
  rtl::OUString text;
  conversion->getPropertyValue("PersistentRepresentation") >>= text;
  return fromOffice(text);
}

}  // namespace mervane::addin
