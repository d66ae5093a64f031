#include "calc/filter_memory.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/FilterFieldType.hpp>
#include <com/sun/star/sheet/FilterFieldValue.hpp>
#include <com/sun/star/sheet/XDatabaseRange.hpp>
#include <com/sun/star/sheet/XSheetFilterDescriptor3.hpp>
#include <com/sun/star/sheet/XSheetFilterable.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUnnamedDatabaseRanges.hpp>
#include <utility>

namespace mervane::addin {

namespace {

namespace sheetapi = star::sheet;
using star::table::CellRangeAddress;
using Document = uno::Reference<star::frame::XModel>;
using Properties = uno::Reference<star::beans::XPropertySet>;

constexpr const char* heading = "ContainsHeader";
constexpr const char* caseSensitive = "IsCaseSensitive";
constexpr const char* expressions = "UseRegularExpressions";

uno::Reference<sheetapi::XUnnamedDatabaseRanges> rangesOf(const Document& document) {
  const Properties properties(document, uno::UNO_QUERY_THROW);
  return uno::Reference<sheetapi::XUnnamedDatabaseRanges>(properties->getPropertyValue("UnnamedDatabaseRanges"),
                                                          uno::UNO_QUERY_THROW);
}

bool isSet(const Properties& object, const char* name) {
  bool value = false;
  object->getPropertyValue(rtl::OUString::createFromAscii(name)) >>= value;
  return value;
}

uno::Reference<sheetapi::XSheetFilterable> filterable(const Document& document, const CellRangeAddress& cells) {
  const uno::Reference<sheetapi::XSpreadsheetDocument> book(document, uno::UNO_QUERY_THROW);
  const uno::Reference<star::container::XIndexAccess> sheets(book->getSheets(), uno::UNO_QUERY_THROW);
  const uno::Reference<sheetapi::XSpreadsheet> sheet(sheets->getByIndex(cells.Sheet), uno::UNO_QUERY_THROW);
  return uno::Reference<sheetapi::XSheetFilterable>(
      sheet->getCellRangeByPosition(cells.StartColumn, cells.StartRow, cells.EndColumn, cells.EndRow),
      uno::UNO_QUERY_THROW);
}

/// The office tells text criteria and takes numbers for them again, unless their kind is filled in.
uno::Sequence<sheetapi::TableFilterField3> withKinds(uno::Sequence<sheetapi::TableFilterField3> fields) {
  for (sal_Int32 i = 0; i < fields.getLength(); ++i) {
    sheetapi::TableFilterField3& field = fields[i];
    for (sal_Int32 j = 0; j < field.Values.getLength(); ++j) {
      sheetapi::FilterFieldValue& value = field.Values[j];
      if (!value.IsNumeric && value.FilterType == sheetapi::FilterFieldType::NUMERIC) {
        value.FilterType = sheetapi::FilterFieldType::STRING;
      }
    }
  }
  return fields;
}

}  // namespace

FilterMemory::FilterMemory(Document document, sal_Int16 sheet)
    : document_(std::move(document)), sheet_(sheet), before_(look()) {}

std::optional<FilterMemory::State> FilterMemory::look() const {
  const auto ranges = rangesOf(document_);
  if (!ranges->hasByTable(sheet_)) return std::nullopt;
  const uno::Reference<sheetapi::XDatabaseRange> range(ranges->getByTable(sheet_), uno::UNO_QUERY_THROW);
  const uno::Reference<sheetapi::XSheetFilterDescriptor3> filter(range->getFilterDescriptor(), uno::UNO_QUERY_THROW);
  const Properties settings(filter, uno::UNO_QUERY_THROW);
  return State{.shown = isSet(Properties(range, uno::UNO_QUERY_THROW), "AutoFilter"),
               .cells = range->getDataArea(),
               .hasHeading = isSet(settings, heading),
               .caseSensitive = isSet(settings, caseSensitive),
               .byExpressions = isSet(settings, expressions),
               .fields = withKinds(filter->getFilterFields3())};
}

void FilterMemory::restore() const {
  const std::optional<State> now = look();
  if (!now) return;
  const auto ranges = rangesOf(document_);
  const auto showArrows = [&](bool shown) {
    set(Properties(ranges->getByTable(sheet_), uno::UNO_QUERY_THROW), "AutoFilter", uno::Any(shown));
  };
  if (!before_) {
    if (now->shown) showArrows(false);
    return;
  }
  if (before_->cells != now->cells) {
    if (now->shown) showArrows(false);
    ranges->setByTable(before_->cells);
  }
  showArrows(before_->shown);
  if (!before_->fields.hasElements()) return;
  const auto cells = filterable(document_, before_->cells);
  const auto filter = cells->createFilterDescriptor(true);
  const Properties settings(filter, uno::UNO_QUERY_THROW);
  set(settings, heading, uno::Any(before_->hasHeading));
  set(settings, caseSensitive, uno::Any(before_->caseSensitive));
  set(settings, expressions, uno::Any(before_->byExpressions));
  uno::Reference<sheetapi::XSheetFilterDescriptor3>(filter, uno::UNO_QUERY_THROW)->setFilterFields3(before_->fields);
  cells->filter(filter);
}

}  // namespace mervane::addin
