#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "hosts/charts/chart_store.h"
#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/charts/model.h"
#include "spreadsheet/object.h"

namespace mervane::workbook::charts {

class Drawing;
using mervane::charts::DrawingItem;

/// All charts of one workbook: what stands behind the chart service and its objects.
///
/// Drawings are read when a sheet is first asked for its charts, so that the drawings of a workbook whose charts
/// nobody asks for are not touched. Nothing reaches the package before `write`. Objects may outlive the workbook:
/// after `close` they raise.
class ChartBook : public mervane::charts::ChartStore {
 public:
  /// @param host must live until `close`.
  explicit ChartBook(ChartHost& host);
  ~ChartBook() override;
  ChartBook(const ChartBook&) = delete;
  ChartBook& operator=(const ChartBook&) = delete;

  /// Raises when the workbook is closed.
  [[nodiscard]] ChartHost& host() const override;
  void close() noexcept;

  std::shared_ptr<Chart> addChart() override;
  void embed(const std::shared_ptr<Chart>& chart, std::int32_t sheet) override;
  void move(std::int32_t sheet, DrawingItem& item, const Box& box) override;
  void remove(const std::shared_ptr<Chart>& chart) override;
  [[nodiscard]] const std::shared_ptr<Chart>& active() const noexcept override { return active_; }
  [[nodiscard]] Drawing& drawing(std::int32_t sheet);
  [[nodiscard]] std::vector<std::shared_ptr<DrawingItem>> items(std::int32_t sheet) override;
  [[nodiscard]] Box boxOf(std::int32_t sheet, const DrawingItem& item) override;
  [[nodiscard]] Box boxOf(const Chart& chart) override;

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
