#pragma once

#include <memory>
#include <utility>

#include "hosts/charts/call.h"
#include "hosts/charts/chart_store.h"
#include "hosts/charts/model.h"
#include "spreadsheet/object.h"

namespace mervane::charts {

/// An object of the object model that belongs to one chart. It raises once the workbook is closed or the chart is
/// deleted, and refuses assignments where the chart came with the file.
class ChartPart : public sheet::Object {
 public:
  ChartPart(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart)
      : book_(std::move(book)), chart_(std::move(chart)) {}

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) final;

 protected:
  /// Answers one use of a member, or raises memberNotSupported.
  virtual Variant answer(const Call& call) = 0;
  /// For methods that change the chart.
  void requireOwn() const;

  [[nodiscard]] ChartStore& book() const noexcept { return *book_; }
  [[nodiscard]] Chart& chart() const noexcept { return *chart_; }
  [[nodiscard]] const std::shared_ptr<ChartStore>& bookRef() const noexcept { return book_; }
  [[nodiscard]] const std::shared_ptr<Chart>& chartRef() const noexcept { return chart_; }

  /// Another object of the same chart.
  template <class T, class... Arguments>
  [[nodiscard]] Variant make(Arguments&&... arguments) const {
    return sheet::ObjectRef(std::make_shared<T>(book_, chart_, std::forward<Arguments>(arguments)...));
  }
  /// A reference to a member of the chart, which keeps the chart.
  template <class T>
  [[nodiscard]] std::shared_ptr<T> part(T& member) const {
    return std::shared_ptr<T>(chart_, &member);
  }

 private:
  std::shared_ptr<ChartStore> book_;
  std::shared_ptr<Chart> chart_;
};

}  // namespace mervane::charts
