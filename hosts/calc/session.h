#pragma once

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/document/XActionLockable.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/calc/office_call.h"
#include "hosts/charts/chart_store.h"
#include "mervane/failure.h"
#include "spreadsheet/cell_address.h"
#include "spreadsheet/object.h"

namespace mervane::calc {

class CalcCharts;
class CellReader;
class FormatBuffer;
class NumberFormats;
class SheetFacts;
class ValueBuffer;

using mervane::sheet::CellAddress;
using mervane::sheet::CellArea;
using mervane::sheet::SheetArea;

/// What all objects of one host share: the document, what is known of it, and what waits to be written into it.
///
/// Sheets are zero-based positions. What was read is kept until something could have changed it; what is written waits
/// until anything but another cell is asked for. So a caller sees no difference, but the office is called for blocks of
/// cells and not for each.
class Session : public mervane::charts::ChartCells, public std::enable_shared_from_this<Session> {
 public:
  Session(const uno::Reference<uno::XComponentContext>& context, const uno::Reference<css::frame::XModel>& model);
  ~Session() override;
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Nothing reaches the document any more; every use raises from now on.
  void close() noexcept;
  /// Raises when the host is closed.
  void requireOpen() const;

  [[nodiscard]] const uno::Reference<uno::XComponentContext>& context() const { return context_; }
  [[nodiscard]] const uno::Reference<css::frame::XModel>& model() const { return model_; }
  /// A service that the document makes, asked for one of its interfaces.
  template <class Interface>
  [[nodiscard]] uno::Reference<Interface> make(const char* service) const {
    const uno::Reference<css::lang::XMultiServiceFactory> factory(model_, uno::UNO_QUERY_THROW);
    return uno::Reference<Interface>(factory->createInstance(rtl::OUString::createFromAscii(service)),
                                     uno::UNO_QUERY_THROW);
  }

  [[nodiscard]] std::int32_t sheetCount() const;
  [[nodiscard]] const std::string& sheetName(std::int32_t sheet) const override;
  [[nodiscard]] std::optional<std::int32_t> sheetNamed(std::string_view name) const override;
  [[nodiscard]] uno::Reference<css::sheet::XSpreadsheet> sheetAt(std::int32_t sheet) const;
  [[nodiscard]] uno::Reference<css::table::XCellRange> rangeOf(const SheetArea& area) const;
  /// "Sheet1!B7", for people.
  [[nodiscard]] std::string place(std::int32_t sheet, const CellArea& area) const;

  [[nodiscard]] std::int32_t activeSheet() const;
  void activateSheet(std::int32_t sheet);
  void select(const SheetArea& area);
  [[nodiscard]] CellAddress activeCell() const;
  /// The cells that a reference in A1 form or a name stands for; raises where it names none.
  [[nodiscard]] SheetArea resolve(std::string_view reference, std::int32_t sheetWithout) const;

  /// As Range.Value gives it.
  [[nodiscard]] Variant value(std::int32_t sheet, CellAddress at);
  [[nodiscard]] Variant cellValue(std::int32_t sheet, CellAddress at) override { return value(sheet, at); }
  void setValue(std::int32_t sheet, CellAddress at, const Variant& value);
  [[nodiscard]] std::optional<SheetArea> areaOf(const Variant& range) const override;

  [[nodiscard]] FormatBuffer& formats() { return *formats_; }
  [[nodiscard]] NumberFormats& numberFormats() { return *numberFormats_; }
  [[nodiscard]] SheetFacts& facts() { return *facts_; }
  [[nodiscard]] CalcCharts& charts() { return *charts_; }
  [[nodiscard]] const std::shared_ptr<CalcCharts>& chartsRef() { return charts_; }

  /// Writes all values and formats that wait. To be called before the document is asked anything that they could
  /// change. A failure is raised, and kept for `flush`.
  void settle();
  void settleValues();
  /// The same, and charts too; forgets what was read. Raises the first failure since the last flush.
  void flush();
  /// Values or formats were changed past the buffers.
  void forgetValues(std::int32_t sheet, const CellArea& area);
  /// The rows of the area were put into the order of a column.
  void sorted(std::int32_t sheet, const CellArea& area, std::int32_t keyColumn);
  /// Cells got another number format.
  void forgetKinds(std::int32_t sheet, const CellArea& area);
  void forgetAll();

  void screenUpdating(bool on);
  [[nodiscard]] bool screenUpdating() const { return screenUpdating_; }

  std::int32_t referenceStyle;
  /// The indexes that colours were last asked for by, of fills and of lines.
  std::map<std::int32_t, std::int32_t> fillColors;
  std::map<std::int32_t, std::int32_t> lineColors;

 private:
  template <class Body>
  void keepingFailure(Body&& body);
  [[nodiscard]] std::int32_t chosenReferenceStyle() const;
  [[nodiscard]] uno::Reference<css::sheet::XSpreadsheetView> view() const;
  void refreshNames() const;
  void lockOffice(bool locked);

  uno::Reference<uno::XComponentContext> context_;
  uno::Reference<css::frame::XModel> model_;
  uno::Reference<css::sheet::XSpreadsheetDocument> document_;
  bool open_ = true;
  bool screenUpdating_ = true;
  std::optional<Failure> firstFailure_;
  std::int32_t ownActiveSheet_ = 0;              ///< for a document that nobody looks at
  mutable std::vector<std::string> sheetNames_;  ///< empty: not asked for yet
  mutable std::vector<uno::Reference<css::sheet::XSpreadsheet>> sheets_;
  std::unique_ptr<NumberFormats> numberFormats_;
  std::unique_ptr<SheetFacts> facts_;
  std::unique_ptr<ValueBuffer> values_;
  std::unique_ptr<FormatBuffer> formats_;
  std::unique_ptr<CellReader> reader_;
  std::shared_ptr<CalcCharts> charts_;
};

}  // namespace mervane::calc
