#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/charts/chart_store.h"
#include "hosts/workbook/cell_address.h"
#include "hosts/workbook/geometry.h"
#include "mervane/variant.h"
#include "spreadsheet/object.h"

namespace mervane::workbook {

class Package;

/// What the charts ask of the workbook around them. Sheets are zero-based positions among the worksheets.
class ChartHost : public mervane::charts::ChartCells {
 public:
  [[nodiscard]] virtual Package& package() = 0;
  [[nodiscard]] virtual std::int32_t sheetCount() const = 0;
  /// The part that holds the sheet, such as "xl/worksheets/sheet1.xml".
  [[nodiscard]] virtual const std::string& sheetPart(std::int32_t sheet) const = 0;
  [[nodiscard]] virtual std::int32_t activeSheet() const = 0;
  /// A chart was moved into that sheet, which is the active one from now on.
  virtual void activateSheet(std::int32_t sheet) = 0;

  /// The number format's text, "General" where the cell has none.
  [[nodiscard]] virtual std::string cellNumberFormat(std::int32_t sheet, CellAddress cell) = 0;
  [[nodiscard]] virtual const Geometry& geometry(std::int32_t sheet) = 0;

  [[nodiscard]] virtual sheet::ObjectRef rangeObject(const SheetArea& area) = 0;

  /// The relation id in the sheet's drawing element; empty where it has none.
  [[nodiscard]] virtual std::string drawingRelation(std::int32_t sheet) = 0;
  /// Sets that element, or takes it away for an empty id. The sheet part counts as changed.
  virtual void setDrawingRelation(std::int32_t sheet, const std::string& id) = 0;
  /// Raises the failure of a protected sheet where its objects may not be changed.
  virtual void requireUnprotectedObjects(std::int32_t sheet) = 0;
  /// Says that something was changed, in words for a dry run such as "chart \"Profiles\" is deleted".
  virtual void note(std::string text) = 0;
};

/// What the workbook asks of its charts: the chart members of the object model.
class ChartService {
 public:
  virtual ~ChartService() = default;
  /// Application.Charts.
  [[nodiscard]] virtual sheet::ObjectRef charts() = 0;
  /// Application.ActiveChart; empty where no chart is active.
  [[nodiscard]] virtual sheet::ObjectRef activeChart() = 0;
  /// Worksheet.ChartObjects, the collection.
  [[nodiscard]] virtual sheet::ObjectRef chartObjects(std::int32_t sheet) = 0;
  /// Worksheet.Shapes, the collection.
  [[nodiscard]] virtual sheet::ObjectRef shapes(std::int32_t sheet) = 0;
  /// What lies in the worksheets.
  [[nodiscard]] virtual mervane::charts::ChartStore& store() = 0;
  /// Puts the changed drawing and chart parts into the package. Called once before each save, before the sheets are
  /// written; the cells' values of that moment go into the caches of the charts.
  virtual void write() = 0;
};

/// @param host outlives the service.
[[nodiscard]] std::unique_ptr<ChartService> makeChartService(ChartHost& host);

}  // namespace mervane::workbook
