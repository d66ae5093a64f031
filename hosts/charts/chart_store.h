#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/charts/model.h"
#include "mervane/variant.h"

namespace mervane::charts {

/// What charts ask of the cells around them. Sheets are zero-based positions among the worksheets.
class ChartCells {
 public:
  virtual ~ChartCells() = default;

  [[nodiscard]] virtual const std::string& sheetName(std::int32_t sheet) const = 0;
  /// Without regard to case.
  [[nodiscard]] virtual std::optional<std::int32_t> sheetNamed(std::string_view name) const = 0;
  /// The value as Range.Value gives it, but a formula without a computed value is empty.
  [[nodiscard]] virtual Variant cellValue(std::int32_t sheet, CellAddress cell) = 0;
  /// The cells of a Range object of this host; nothing for any other value.
  [[nodiscard]] virtual std::optional<SheetArea> areaOf(const Variant& range) const = 0;
};

/// One thing that lies in a worksheet: a chart, or a picture, shape, group or other frame, which is only ever moved.
struct DrawingItem {
  std::int32_t type = number::shapeIsChart;  ///< the object model's number for its kind
  std::string name;
  std::shared_ptr<Chart> chart;  ///< empty where it is none
  bool deleted = false;
  virtual ~DrawingItem() = default;
};

/// All charts of one host, and the things that lie in its worksheets: what stands behind the objects of this folder.
/// Objects may outlive the host; they raise then.
class ChartStore {
 public:
  virtual ~ChartStore() = default;

  /// Raises when the host is closed.
  [[nodiscard]] virtual ChartCells& host() const = 0;

  /// A new chart on a sheet of its own, which becomes the active one.
  virtual std::shared_ptr<Chart> addChart() = 0;
  /// Moves a chart from its own sheet into a worksheet, as the topmost thing there.
  virtual void embed(const std::shared_ptr<Chart>& chart, std::int32_t sheet) = 0;
  /// Takes the chart out of its sheet.
  virtual void remove(const std::shared_ptr<Chart>& chart) = 0;
  /// Empty where no chart is active.
  [[nodiscard]] virtual const std::shared_ptr<Chart>& active() const noexcept = 0;

  /// What lies in the worksheet, in drawing order, the topmost last.
  [[nodiscard]] virtual std::vector<std::shared_ptr<DrawingItem>> items(std::int32_t sheet) = 0;
  /// Position and size on the sheet, in points.
  [[nodiscard]] virtual Box boxOf(std::int32_t sheet, const DrawingItem& item) = 0;
  /// Moves or resizes anything that lies in a worksheet.
  virtual void move(std::int32_t sheet, DrawingItem& item, const Box& box) = 0;
  /// Position and size on the sheet; size alone counts for a chart on a sheet of its own.
  [[nodiscard]] virtual Box boxOf(const Chart& chart) = 0;

  /// Something was assigned to the chart or to a part of it, or a method was called.
  virtual void touched(Chart&) {}
};

}  // namespace mervane::charts
