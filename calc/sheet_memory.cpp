#include "calc/sheet_memory.h"

#include <algorithm>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <set>
#include <utility>

#include "calc/border.h"
#include "calc/content_memory.h"
#include "calc/filter_memory.h"
#include "calc/look_memory.h"

namespace mervane::addin {

namespace {

namespace sheetapi = star::sheet;
using star::table::CellRangeAddress;
using Spreadsheet = uno::Reference<sheetapi::XSpreadsheet>;

/// From the first cell to the end of what is used, and of what will be written.
CellRangeAddress wholeArea(const Spreadsheet& sheet, const std::vector<CellRangeAddress>& written) {
  const auto cursor = sheet->createCursor();
  const uno::Reference<sheetapi::XCellRangeAddressable> place(cursor, uno::UNO_QUERY_THROW);
  const CellRangeAddress all = place->getRangeAddress();
  const uno::Reference<sheetapi::XUsedAreaCursor> used(cursor, uno::UNO_QUERY_THROW);
  used->gotoEndOfUsedArea(false);
  CellRangeAddress area = place->getRangeAddress();
  for (const CellRangeAddress& one : written) {
    if (one.Sheet != area.Sheet) continue;
    area.EndColumn = std::max(area.EndColumn, one.EndColumn);
    area.EndRow = std::max(area.EndRow, one.EndRow);
  }
  area.StartColumn = 0;
  area.StartRow = 0;
  area.EndColumn = std::min(area.EndColumn, all.EndColumn);
  area.EndRow = std::min(area.EndRow, all.EndRow);
  return area;
}

}  // namespace

/// The same of one sheet.
class SheetMemory::Sheet {
 public:
  Sheet(uno::Reference<star::frame::XModel> document, sal_Int16 position, const std::vector<CellRangeAddress>& written)
      : document_(std::move(document)),
        position_(position),
        area_(wholeArea(sheet(), written)),
        contents_(sheet(), area_),
        looks_(sheet(), area_),
        filter_(document_, position) {
    widths_ = eachColumn([](const Properties& column, sal_Int32) { return column->getPropertyValue("Width"); });
    for (const rtl::OUString& name : charts()->getElementNames()) charts_.insert(name);
  }

  void restore() const {
    restoreCharts();
    contents_.restore(sheet());
    looks_.restore(document_, sheet());
    eachColumn([&](const Properties& column, sal_Int32 index) {
      const uno::Any& width = widths_[static_cast<std::size_t>(index)];
      if (column->getPropertyValue("Width") != width) column->setPropertyValue("Width", width);
      return uno::Any();
    });
    filter_.restore();
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
    std::vector<uno::Any> answers;
    for (sal_Int32 i = 0; i <= area_.EndColumn; ++i) {
      answers.push_back(work(Properties(columns->getByIndex(i), uno::UNO_QUERY_THROW), i));
    }
    return answers;
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

  uno::Reference<star::frame::XModel> document_;
  sal_Int16 position_;
  CellRangeAddress area_;
  ContentMemory contents_;
  LookMemory looks_;
  FilterMemory filter_;
  std::vector<uno::Any> widths_;
  std::set<rtl::OUString> charts_;
};

SheetMemory::SheetMemory(const uno::Reference<star::frame::XModel>& document,
                         const std::vector<CellRangeAddress>& written)
    : document_(document) {
  std::set<sal_Int16> sheets;
  for (const CellRangeAddress& area : written) sheets.insert(area.Sheet);
  for (const sal_Int16 sheet : sheets) remembered_.push_back(std::make_unique<Sheet>(document, sheet, written));
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
