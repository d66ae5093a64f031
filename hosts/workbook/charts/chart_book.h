#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/charts/model.h"
#include "spreadsheet/object.h"

namespace mervane::workbook::charts {

class Drawing;
struct DrawingItem;

/// All charts of one workbook: what stands behind the chart service and its objects.
///
/// Drawings are read when a sheet is first asked for its charts, so that the drawings of a workbook whose charts
/// nobody asks for are not touched. Nothing reaches the package before `write`. Objects may outlive the workbook:
/// after `close` they raise.
class ChartBook : public std::enable_shared_from_this<ChartBook> {
 public:
  /// @param host must live until `close`.
  explicit ChartBook(ChartHost& host);
  ~ChartBook();
  ChartBook(const ChartBook&) = delete;
  ChartBook& operator=(const ChartBook&) = delete;

  /// Raises when the workbook is closed.
  [[nodiscard]] ChartHost& host() const;
  void close() noexcept;

  /// A new chart on a sheet of its own, which becomes the active one.
  std::shared_ptr<Chart> addChart();
  /// Moves a chart from its own sheet into a worksheet, as the topmost thing there.
  void embed(const std::shared_ptr<Chart>& chart, std::int32_t sheet);
  /// Moves or resizes anything that lies in a worksheet.
  void move(std::int32_t sheet, DrawingItem& item, const Box& box);
  /// Takes the chart out of its sheet.
  void remove(const std::shared_ptr<Chart>& chart);
  /// Empty where no chart is active.
  [[nodiscard]] const std::shared_ptr<Chart>& active() const noexcept { return active_; }
  [[nodiscard]] Drawing& drawing(std::int32_t sheet);
  /// Position and size on the sheet, in points; size alone counts for a chart on a sheet of its own.
  [[nodiscard]] Box boxOf(const Chart& chart);

  /// Puts all that changed into the package. A chart that was never moved into a worksheet is not written; the host
  /// is told so.
  void write();

 private:
  ChartHost* host_;
  std::map<std::int32_t, std::unique_ptr<Drawing>> drawings_;
  std::shared_ptr<Chart> active_;
  std::vector<std::shared_ptr<Chart>> onOwnSheets_;  ///< made and not moved yet
};

}  // namespace mervane::workbook::charts
