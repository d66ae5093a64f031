#pragma once

#include <com/sun/star/chart2/XChartDocument.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "hosts/calc/office_call.h"
#include "hosts/charts/chart_store.h"

namespace mervane::calc {

class Session;

/// The charts of the document and whatever else lies in its sheets.
///
/// A chart that was made here is kept as a model and drawn with the office's own charts when the host is flushed, since
/// the office has no chart on a sheet of its own and no palette. Charts that were in the document are read from it.
class CalcCharts : public mervane::charts::ChartStore {
 public:
  explicit CalcCharts(Session& session) : session_(&session) {}

  void close() noexcept;
  /// Draws the charts that were changed since they were last drawn.
  void draw();

  [[nodiscard]] mervane::charts::ChartCells& host() const override;
  std::shared_ptr<mervane::charts::Chart> addChart() override;
  void embed(const std::shared_ptr<mervane::charts::Chart>& chart, std::int32_t sheet) override;
  void remove(const std::shared_ptr<mervane::charts::Chart>& chart) override;
  [[nodiscard]] const std::shared_ptr<mervane::charts::Chart>& active() const noexcept override { return active_; }
  [[nodiscard]] std::vector<std::shared_ptr<mervane::charts::DrawingItem>> items(std::int32_t sheet) override;
  [[nodiscard]] mervane::charts::Box boxOf(std::int32_t sheet, const mervane::charts::DrawingItem& item) override;
  void move(std::int32_t sheet, mervane::charts::DrawingItem& item, const mervane::charts::Box& box) override;
  [[nodiscard]] mervane::charts::Box boxOf(const mervane::charts::Chart& chart) override;
  void touched(mervane::charts::Chart& chart) override;

 private:
  struct Item : mervane::charts::DrawingItem {
    uno::Reference<css::drawing::XShape> shape;
  };
  using Items = std::vector<std::shared_ptr<Item>>;

  [[nodiscard]] Session& session() const;
  [[nodiscard]] uno::Reference<css::drawing::XDrawPage> page(std::int32_t sheet) const;
  /// What lies in the sheet now. A thing that was known before stays the same object.
  const Items& refreshed(std::int32_t sheet);
  [[nodiscard]] std::shared_ptr<Item> itemFor(const uno::Reference<css::drawing::XShape>& shape);
  [[nodiscard]] std::shared_ptr<Item> itemOf(const mervane::charts::Chart& chart);
  [[nodiscard]] std::string freeName(std::int32_t sheet);

  Session* session_;
  std::map<std::int32_t, Items> items_;
  std::shared_ptr<mervane::charts::Chart> active_;
  std::set<const mervane::charts::Chart*> changed_;
};

}  // namespace mervane::calc
