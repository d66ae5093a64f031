#include "calc/sheet_memory.h"

#include <algorithm>
#include <com/sun/star/beans/PropertyAttribute.hpp>
#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XDatabaseRange.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XUnnamedDatabaseRanges.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <utility>

#include "calc/border.h"

namespace mervane::addin {

namespace {

namespace sheetapi = star::sheet;
using star::table::CellRangeAddress;
using Spreadsheet = uno::Reference<sheetapi::XSpreadsheet>;
using Addresses = uno::Sequence<CellRangeAddress>;

constexpr sal_Int32 contentAndFormats = sheetapi::CellFlags::VALUE | sheetapi::CellFlags::DATETIME |
                                        sheetapi::CellFlags::STRING | sheetapi::CellFlags::FORMULA |
                                        sheetapi::CellFlags::HARDATTR | sheetapi::CellFlags::STYLES;

CellRangeAddress usedArea(const Spreadsheet& sheet) {
  const auto cursor = sheet->createCursor();
  const uno::Reference<sheetapi::XUsedAreaCursor> used(cursor, uno::UNO_QUERY_THROW);
  used->gotoEndOfUsedArea(false);
  const uno::Reference<sheetapi::XCellRangeAddressable> end(cursor, uno::UNO_QUERY_THROW);
  CellRangeAddress area = end->getRangeAddress();
  area.StartColumn = 0;
  area.StartRow = 0;
  return area;
}

uno::Reference<star::table::XCellRange> rangeOf(const Spreadsheet& sheet, const CellRangeAddress& area) {
  return uno::Reference<star::table::XCellRange>(
      sheet->getCellRangeByPosition(area.StartColumn, area.StartRow, area.EndColumn, area.EndRow), uno::UNO_SET_THROW);
}

/// One look that some cells have: their style and what is set on top of it.
struct Look {
  Addresses cells;
  uno::Any style;
  std::vector<std::pair<rtl::OUString, uno::Any>> own;
};

Look lookOf(const uno::Reference<sheetapi::XSheetCellRanges>& ranges) {
  Look look;
  look.cells = ranges->getRangeAddresses();
  const uno::Reference<star::beans::XPropertySet> values(ranges, uno::UNO_QUERY_THROW);
  const uno::Reference<star::beans::XPropertyState> states(ranges, uno::UNO_QUERY_THROW);
  look.style = values->getPropertyValue("CellStyle");
  for (const star::beans::Property& property : values->getPropertySetInfo()->getProperties()) {
    // These two describe the borders anew, and the outline of the whole range with them.
    const bool skipped = property.Name == "CellStyle" || property.Name == "TableBorder" ||
                         property.Name == "TableBorder2" || property.Name.startsWith("Conditional") ||
                         property.Name.startsWith("Validation") ||
                         (property.Attributes & star::beans::PropertyAttribute::READONLY) != 0;
    if (skipped || states->getPropertyState(property.Name) != star::beans::PropertyState_DIRECT_VALUE) continue;
    look.own.emplace_back(property.Name, values->getPropertyValue(property.Name));
  }
  return look;
}

}  // namespace

/// The same of one sheet.
class SheetMemory::Sheet {
 public:
  Sheet(uno::Reference<star::frame::XModel> document, sal_Int16 position)
      : document_(std::move(document)), position_(position), area_(usedArea(sheet())) {
    const auto range = rangeOf(sheet(), area_);
    values_ = uno::Reference<sheetapi::XCellRangeData>(range, uno::UNO_QUERY_THROW)->getDataArray();
    const uno::Reference<sheetapi::XCellRangesQuery> query(range, uno::UNO_QUERY_THROW);
    for (const CellRangeAddress& cells : query->queryContentCells(sheetapi::CellFlags::FORMULA)->getRangeAddresses()) {
      const uno::Reference<sheetapi::XCellRangeFormula> formulas(rangeOf(sheet(), cells), uno::UNO_QUERY_THROW);
      formulas_.emplace_back(cells, formulas->getFormulaArray());
    }
    const uno::Reference<sheetapi::XUniqueCellFormatRangesSupplier> formats(range, uno::UNO_QUERY_THROW);
    const auto looks = formats->getUniqueCellFormatRanges();
    for (sal_Int32 i = 0; i < looks->getCount(); ++i) {
      looks_.push_back(lookOf(uno::Reference<sheetapi::XSheetCellRanges>(looks->getByIndex(i), uno::UNO_QUERY_THROW)));
    }
    widths_ = eachColumn([](const Properties& column, sal_Int32) { return column->getPropertyValue("Width"); });
    filters_ = filter().hasValue();
    for (const rtl::OUString& name : charts()->getElementNames()) charts_.insert(name);
  }

  void restore() const {
    const CellRangeAddress now = usedArea(sheet());
    CellRangeAddress all = area_;
    all.EndColumn = std::max(all.EndColumn, now.EndColumn);
    all.EndRow = std::max(all.EndRow, now.EndRow);
    restoreCharts();
    restoreFilter();
    const uno::Reference<sheetapi::XSheetOperation> cells(rangeOf(sheet(), all), uno::UNO_QUERY_THROW);
    cells->clearContents(contentAndFormats);
    uno::Reference<sheetapi::XCellRangeData>(rangeOf(sheet(), area_), uno::UNO_QUERY_THROW)->setDataArray(values_);
    for (const auto& [place, formulas] : formulas_) {
      uno::Reference<sheetapi::XCellRangeFormula>(rangeOf(sheet(), place), uno::UNO_QUERY_THROW)
          ->setFormulaArray(formulas);
    }
    for (const Look& look : looks_) restoreLook(look);
    eachColumn([&](const Properties& column, sal_Int32 index) {
      const std::size_t at = static_cast<std::size_t>(index);
      if (at < widths_.size() && column->getPropertyValue("Width") != widths_[at]) {
        column->setPropertyValue("Width", widths_[at]);
      }
      return uno::Any();
    });
  }

 private:
  using Properties = uno::Reference<star::beans::XPropertySet>;

  [[nodiscard]] Spreadsheet sheet() const {
    const uno::Reference<sheetapi::XSpreadsheetDocument> book(document_, uno::UNO_QUERY_THROW);
    const uno::Reference<star::container::XIndexAccess> sheets(book->getSheets(), uno::UNO_QUERY_THROW);
    return Spreadsheet(sheets->getByIndex(position_), uno::UNO_QUERY_THROW);
  }

  [[nodiscard]] uno::Reference<star::table::XTableCharts> charts() const {
    const uno::Reference<star::table::XTableChartsSupplier> supplier(sheet(), uno::UNO_QUERY_THROW);
    return uno::Reference<star::table::XTableCharts>(supplier->getCharts(), uno::UNO_SET_THROW);
  }

  template <class Work>
  std::vector<uno::Any> eachColumn(Work&& work) const {
    const uno::Reference<star::table::XColumnRowRange> range(sheet(), uno::UNO_QUERY_THROW);
    const uno::Reference<star::container::XIndexAccess> columns(range->getColumns(), uno::UNO_QUERY_THROW);
    // The results reach some columns further than what is there now.
    constexpr sal_Int32 beyond = 64;
    std::vector<uno::Any> answers;
    const sal_Int32 last = std::min(area_.EndColumn + beyond, columns->getCount() - 1);
    for (sal_Int32 i = 0; i <= last; ++i) {
      answers.push_back(work(Properties(columns->getByIndex(i), uno::UNO_QUERY_THROW), i));
    }
    return answers;
  }

  /// The area of the sheet's filter; empty where there is none.
  [[nodiscard]] uno::Any filter() const {
    const uno::Reference<star::beans::XPropertySet> document(document_, uno::UNO_QUERY_THROW);
    uno::Reference<sheetapi::XUnnamedDatabaseRanges> ranges;
    document->getPropertyValue("UnnamedDatabaseRanges") >>= ranges;
    if (!ranges.is() || !ranges->hasByTable(position_)) return {};
    const Properties range(ranges->getByTable(position_), uno::UNO_QUERY_THROW);
    bool shown = false;
    range->getPropertyValue("AutoFilter") >>= shown;
    return shown ? uno::Any(range) : uno::Any();
  }

  void restoreFilter() const {
    const uno::Any now = filter();
    if (filters_ || !now.hasValue()) return;
    Properties range;
    if (now >>= range) range->setPropertyValue("AutoFilter", uno::Any(false));
  }

  /// By their drawing objects: the collection of charts frees a chart twice while the office records no changes.
  void restoreCharts() const {
    const uno::Reference<star::drawing::XDrawPageSupplier> supplier(sheet(), uno::UNO_QUERY_THROW);
    const uno::Reference<star::drawing::XDrawPage> page(supplier->getDrawPage(), uno::UNO_SET_THROW);
    const auto present = charts();
    for (sal_Int32 i = page->getCount() - 1; i >= 0; --i) {
      const uno::Reference<star::drawing::XShape> shape(page->getByIndex(i), uno::UNO_QUERY_THROW);
      const Properties properties(shape, uno::UNO_QUERY_THROW);
      rtl::OUString name;
      if (!properties->getPropertySetInfo()->hasPropertyByName("PersistName")) continue;
      properties->getPropertyValue("PersistName") >>= name;
      if (present->hasByName(name) && charts_.count(name) == 0) page->remove(shape);
    }
  }

  void restoreLook(const Look& look) const {
    const uno::Reference<star::lang::XMultiServiceFactory> factory(document_, uno::UNO_QUERY_THROW);
    const uno::Reference<sheetapi::XSheetCellRangeContainer> ranges(
        factory->createInstance("com.sun.star.sheet.SheetCellRanges"), uno::UNO_QUERY_THROW);
    ranges->addRangeAddresses(look.cells, false);
    const Properties properties(ranges, uno::UNO_QUERY_THROW);
    rtl::OUString style;
    // What all cells have after the clearing needs no words.
    if ((look.style >>= style) && style != "Default") properties->setPropertyValue("CellStyle", look.style);
    for (const auto& [name, value] : look.own) {
      // A property that the office gives and does not take is of no use to anybody.
      atBorder([&, one = name, what = value] { properties->setPropertyValue(one, what); });
    }
  }

  uno::Reference<star::frame::XModel> document_;
  sal_Int16 position_;
  CellRangeAddress area_;
  uno::Sequence<uno::Sequence<uno::Any>> values_;
  std::vector<std::pair<CellRangeAddress, uno::Sequence<uno::Sequence<rtl::OUString>>>> formulas_;
  std::vector<Look> looks_;
  std::vector<uno::Any> widths_;
  bool filters_ = false;
  std::set<rtl::OUString> charts_;
};

SheetMemory::SheetMemory(const uno::Reference<star::frame::XModel>& document, const std::set<sal_Int16>& sheets)
    : document_(document) {
  for (const sal_Int16 sheet : sheets) remembered_.push_back(std::make_unique<Sheet>(document, sheet));
}

SheetMemory::~SheetMemory() = default;

void SheetMemory::restore() const {
  struct Locked {
    uno::Reference<star::frame::XModel> document;
    explicit Locked(uno::Reference<star::frame::XModel> one) : document(std::move(one)) { document->lockControllers(); }
    ~Locked() {
      atBorder([&] { document->unlockControllers(); });
    }
  };
  const Locked locked(document_);
  for (const auto& sheet : remembered_) sheet->restore();
}

}  // namespace mervane::addin
