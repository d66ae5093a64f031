#include "hosts/charts/shape_objects.h"

#include <cmath>
#include <deque>

#include "hosts/charts/chart_object.h"
#include "mervane/convert.h"

namespace mervane::charts {
namespace {

namespace member = sheet::member;

/// An enumeration over things of a drawing, some of which may be deleted before their turn.
class DrawingEnumerator : public sheet::Object {
 public:
  using Element = std::pair<std::shared_ptr<DrawingItem>, sheet::ObjectRef>;
  explicit DrawingEnumerator(std::deque<Element> elements) : elements_(std::move(elements)) {}

  Variant invoke(sheet::Access access, member::Id id, std::span<const Variant>) override {
    if (id != member::Next || access == sheet::Access::put) refuseMember();
    while (!elements_.empty() && elements_.front().first->deleted) elements_.pop_front();
    if (elements_.empty()) return {};
    const sheet::ObjectRef next = elements_.front().second;
    elements_.pop_front();
    return next;
  }

 private:
  std::deque<Element> elements_;
};

}  // namespace

Variant ChartsObject::invoke(sheet::Access access, member::Id id, std::span<const Variant> arguments) {
  (void)book_->host();
  const Call call(access, id, arguments);
  if (id != member::Add || call.isPut()) refuseMember();
  return sheet::ObjectRef(std::make_shared<ChartObject>(book_, book_->addChart()));
}

std::vector<std::shared_ptr<DrawingItem>> DrawingCollectionObject::items() const {
  std::vector<std::shared_ptr<DrawingItem>> items = book_->items(sheet_);
  if (elements_ == Elements::charts) std::erase_if(items, [](const auto& one) { return !one->chart; });
  return items;
}

sheet::ObjectRef DrawingCollectionObject::element(const std::shared_ptr<DrawingItem>& item) const {
  if (elements_ == Elements::charts) return std::make_shared<EmbeddedChartObject>(book_, sheet_, item);
  return std::make_shared<ShapeObject>(book_, sheet_, item);
}

Variant DrawingCollectionObject::item(const Variant& which) const {
  const auto all = items();
  if (const auto* name = which.getIf<std::string>()) {
    for (const auto& one : all) {
      if (one->name == *name) return element(one);
    }
    refuse("The sheet holds nothing of that name.");
  }
  const std::int32_t index = toInt32(which, englishLocale());
  if (index < 1 || static_cast<std::size_t>(index) > all.size()) refuse("The sheet holds nothing at that position.");
  return element(all[static_cast<std::size_t>(index - 1)]);
}

Variant DrawingCollectionObject::invoke(sheet::Access access, member::Id id, std::span<const Variant> arguments) {
  (void)book_->host();
  const Call call(access, id, arguments);
  switch (id) {
    case member::Count:
      return call.readOnly(static_cast<std::int32_t>(items().size()));
    case member::Item:
      return call.readOnly(item(call.at(0)));
    case member::NewEnum: {
      std::deque<DrawingEnumerator::Element> elements;
      for (const auto& one : items()) elements.emplace_back(one, element(one));
      return call.readOnly(sheet::ObjectRef(std::make_shared<DrawingEnumerator>(std::move(elements))));
    }
    default:
      refuseMember();
  }
}

Variant PlacedObject::side(const Call& call, double Box::*side) {
  Box box = book_->boxOf(sheet_, *item_);
  if (!call.isPut()) return box.*side;
  const double points = call.assigned<double>();
  const bool isExtent = side == &Box::width || side == &Box::height;
  if (!std::isfinite(points)) refuse("A length must be a finite number.");
  if (isExtent && points < 0.0) refuse("A width or height must not be negative.");
  // A place left of or above the sheet is the sheet's edge.
  box.*side = std::max(0.0, points);
  book_->move(sheet_, *item_, box);
  return {};
}

Variant PlacedObject::invoke(sheet::Access access, member::Id id, std::span<const Variant> arguments) {
  (void)book_->host();
  if (item_->deleted) refuse("The shape has been deleted.");
  const Call call(access, id, arguments);
  switch (id) {
    case member::Left:
      return side(call, &Box::left);
    case member::Top:
      return side(call, &Box::top);
    case member::Width:
      return side(call, &Box::width);
    case member::Height:
      return side(call, &Box::height);
    case member::Name:
      return call.readOnly(item_->name);
    default:
      return answer(call);
  }
}

Variant EmbeddedChartObject::answer(const Call& call) {
  switch (call.member()) {
    case member::Chart:
      return call.readOnly(sheet::ObjectRef(std::make_shared<ChartObject>(book(), item()->chart)));
    case member::Delete:
      if (call.isPut()) refuseMember();
      book()->remove(item()->chart);
      return {};
    default:
      refuseMember();
  }
}

Variant ShapeObject::answer(const Call& call) {
  switch (call.member()) {
    case member::Type:
      return call.readOnly(item()->type);
    case member::DrawingObject:
      if (!item()->chart) refuse("Only a chart has a drawing object here.");
      return call.readOnly(sheet::ObjectRef(std::make_shared<EmbeddedChartObject>(book(), sheet(), item())));
    default:
      refuseMember();
  }
}

}  // namespace mervane::charts
