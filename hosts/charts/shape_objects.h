#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "hosts/charts/call.h"
#include "hosts/charts/chart_store.h"
#include "spreadsheet/object.h"

namespace mervane::charts {

/// The workbook's charts as Application.Charts has them: it makes new ones.
class ChartsObject : public sheet::Object {
 public:
  explicit ChartsObject(std::shared_ptr<ChartStore> book) : book_(std::move(book)) {}
  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override;

 private:
  std::shared_ptr<ChartStore> book_;
};

/// The charts that lie in one worksheet, or everything that lies in it. An enumeration goes over what was there
/// when it began and passes over what was deleted meanwhile.
class DrawingCollectionObject : public sheet::Object {
 public:
  enum class Elements { charts, shapes };
  DrawingCollectionObject(std::shared_ptr<ChartStore> book, std::int32_t sheet, Elements elements)
      : book_(std::move(book)), sheet_(sheet), elements_(elements) {}
  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override;

 private:
  [[nodiscard]] std::vector<std::shared_ptr<DrawingItem>> items() const;
  [[nodiscard]] sheet::ObjectRef element(const std::shared_ptr<DrawingItem>& item) const;
  [[nodiscard]] Variant item(const Variant& which) const;
  std::shared_ptr<ChartStore> book_;
  std::int32_t sheet_;
  Elements elements_;
};

/// What an embedded chart and any other shape have in common: a place in the sheet and a name.
class PlacedObject : public sheet::Object {
 public:
  PlacedObject(std::shared_ptr<ChartStore> book, std::int32_t sheet, std::shared_ptr<DrawingItem> item)
      : book_(std::move(book)), sheet_(sheet), item_(std::move(item)) {}
  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) final;

 protected:
  virtual Variant answer(const Call& call) = 0;
  [[nodiscard]] const std::shared_ptr<ChartStore>& book() const noexcept { return book_; }
  [[nodiscard]] const std::shared_ptr<DrawingItem>& item() const noexcept { return item_; }
  [[nodiscard]] std::int32_t sheet() const noexcept { return sheet_; }

 private:
  Variant side(const Call& call, double Box::*member);
  std::shared_ptr<ChartStore> book_;
  std::int32_t sheet_;
  std::shared_ptr<DrawingItem> item_;
};

/// The frame that holds an embedded chart.
class EmbeddedChartObject : public PlacedObject {
 public:
  using PlacedObject::PlacedObject;

 private:
  Variant answer(const Call& call) override;
};

/// One thing that lies in a worksheet.
class ShapeObject : public PlacedObject {
 public:
  using PlacedObject::PlacedObject;

 private:
  Variant answer(const Call& call) override;
};

}  // namespace mervane::charts
