#include "calc/sheet_memory.h"

#include <algorithm>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <set>
#include <utility>

#include "calc/border.h"
#include "calc/chart_memory.h"
#include "calc/content_memory.h"
#include "calc/filter_memory.h"
#include "calc/look_memory.h"
#include "calc/row_memory.h"

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
  Sheet(const Office& office, uno::Reference<star::frame::XModel> document, sal_Int16 position,
        const std::vector<CellRangeAddress>& written)
      : document_(std::move(document)),
        position_(position),
        area_(wholeArea(sheet(), written)),
        contents_(sheet(), area_),
        looks_(sheet(), area_),
        filter_(document_, position),
        rows_(sheet(), area_.EndRow),
        charts_(office, document_, sheet()) {
    widths_ = eachColumn([](const Properties& column, sal_Int32) { return column->getPropertyValue("Width"); });
  }

  [[nodiscard]] sal_Int16 position() const { return position_; }
  [[nodiscard]] const ContentMemory& contents() const { return contents_; }
  [[nodiscard]] Spreadsheet sheet() const {
    const uno::Reference<sheetapi::XSpreadsheetDocument> book(document_, uno::UNO_QUERY_THROW);
    const uno::Reference<star::container::XIndexAccess> sheets(book->getSheets(), uno::UNO_QUERY_THROW);
    return Spreadsheet(sheets->getByIndex(position_), uno::UNO_QUERY_THROW);
  }

  void restore() const {
    contents_.restore(sheet());
    looks_.restore(document_, sheet());
    eachColumn([&](const Properties& column, sal_Int32 index) {
      const uno::Any& width = widths_[static_cast<std::size_t>(index)];
      if (column->getPropertyValue("Width") != width) column->setPropertyValue("Width", width);
      return uno::Any();
    });
    rows_.restoreHeights(sheet());
    filter_.restore();
    rows_.restoreShown(sheet());
    // Last, since they lie over the cells and are placed by them.
    charts_.restore(sheet());
  }

 private:
  using Properties = uno::Reference<star::beans::XPropertySet>;

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

  uno::Reference<star::frame::XModel> document_;
  sal_Int16 position_;
  CellRangeAddress area_;
  ContentMemory contents_;
  LookMemory looks_;
  FilterMemory filter_;
  RowMemory rows_;
  ChartMemory charts_;
  std::vector<uno::Any> widths_;
};

SheetMemory::SheetMemory(const Office& office, const uno::Reference<star::frame::XModel>& document,
                         const std::vector<CellRangeAddress>& written)
    : office_(office), document_(document), written_(written) {
  std::set<sal_Int16> sheets;
  for (const CellRangeAddress& area : written) sheets.insert(area.Sheet);
  for (const sal_Int16 sheet : sheets) remembered_.push_back(std::make_unique<Sheet>(office, document, sheet, written));
}

SheetMemory::~SheetMemory() = default;

void SheetMemory::mayHaveBeenSorted(const CellRangeAddress& cells, const std::vector<std::int32_t>& keys) {
  const std::vector<sal_Int32> places = placesBySort(keys);
  if (static_cast<std::size_t>(cells.EndRow - cells.StartRow) + 1 != places.size()) return;
  if (std::ranges::is_sorted(places)) return;
  for (const auto& one : remembered_) {
    if (one->position() != cells.Sheet || !one->contents().isMovedIn(one->sheet(), cells, places)) continue;
    const CellRangeAddress moved(cells.Sheet, 0, cells.StartRow, cells.EndColumn + 1, cells.EndRow);
    order_ = RowOrder{moved, inverse(places)};
  }
}

std::shared_ptr<SheetMemory> SheetMemory::ofNow() const {
  auto now = std::make_shared<SheetMemory>(office_, document_, written_);
  if (order_) now->order_ = RowOrder{order_->moved, inverse(order_->places)};
  return now;
}

void SheetMemory::restore() const {
  struct Locked {
    uno::Reference<star::frame::XModel> document;
    explicit Locked(uno::Reference<star::frame::XModel> one) : document(std::move(one)) { document->lockControllers(); }
    ~Locked() {
      atBorder([&] { document->unlockControllers(); });
    }
  };
  const Locked locked(document_);
  for (const auto& one : remembered_) {
    // Where this fails, the cells are written back one by one.
    if (order_ && order_->moved.Sheet == one->position()) atBorder([&] { moveRows(one->sheet(), *order_); });
  }
  for (const auto& sheet : remembered_) sheet->restore();
}

}  // namespace mervane::addin
