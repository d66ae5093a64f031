#include "hosts/calc/charts/calc_charts.h"

#include <algorithm>
#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/table/XTableCharts.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <utility>

#include "hosts/calc/charts/draw_chart.h"
#include "hosts/calc/charts/read_chart.h"
#include "hosts/calc/points.h"
#include "hosts/calc/session.h"
#include "hosts/calc/sheet_facts.h"

namespace mervane::calc {

using mervane::charts::Box;
using mervane::charts::Chart;
using mervane::charts::DrawingItem;

namespace {

constexpr double newChartLeft = 96.0;
constexpr double newChartTop = 60.0;

struct ShapeKind {
  const char* service;
  std::int32_t number;
};
constexpr std::int32_t otherShape = 1;
constexpr ShapeKind shapeKinds[] = {
    {"com.sun.star.drawing.CaptionShape", 4},        {"com.sun.star.drawing.GroupShape", 6},
    {"com.sun.star.drawing.OLE2Shape", 7},           {"com.sun.star.drawing.ControlShape", 8},
    {"com.sun.star.drawing.LineShape", 9},           {"com.sun.star.drawing.ConnectorShape", 9},
    {"com.sun.star.drawing.GraphicObjectShape", 13}, {"com.sun.star.drawing.TextShape", 17},
};

std::int32_t kindOf(const uno::Reference<css::drawing::XShape>& shape) {
  const rtl::OUString service = shape->getShapeType();
  for (const ShapeKind& kind : shapeKinds) {
    if (service.equalsAscii(kind.service)) return kind.number;
  }
  return otherShape;
}

/// The chart that a shape shows; empty where it shows none.
uno::Reference<css::chart2::XChartDocument> chartIn(const uno::Reference<css::drawing::XShape>& shape) {
  if (!shape->getShapeType().equalsAscii("com.sun.star.drawing.OLE2Shape")) return {};
  const uno::Reference<css::beans::XPropertySet> properties(shape, uno::UNO_QUERY_THROW);
  return {properties->getPropertyValue("Model"), uno::UNO_QUERY};
}

std::string nameOf(const uno::Reference<css::drawing::XShape>& shape) {
  const uno::Reference<css::container::XNamed> named(shape, uno::UNO_QUERY);
  return named.is() ? fromOffice(named->getName()) : std::string();
}

Box boxOfShape(const uno::Reference<css::drawing::XShape>& shape) {
  const css::awt::Point position = shape->getPosition();
  const css::awt::Size size = shape->getSize();
  return {toPoints(position.X), toPoints(position.Y), toPoints(size.Width), toPoints(size.Height)};
}

}  // namespace

void CalcCharts::close() noexcept {
  session_ = nullptr;
  active_.reset();
  items_.clear();
}

Session& CalcCharts::session() const {
  if (session_ == nullptr) refuseClosed();
  session_->requireOpen();
  return *session_;
}

mervane::charts::ChartCells& CalcCharts::host() const {
  return session();
}

std::shared_ptr<Chart> CalcCharts::addChart() {
  active_ = std::make_shared<Chart>();
  active_->name = "Chart1";
  return active_;
}

uno::Reference<css::drawing::XDrawPage> CalcCharts::page(std::int32_t sheet) const {
  const uno::Reference<css::drawing::XDrawPageSupplier> supplier(session().sheetAt(sheet), uno::UNO_QUERY_THROW);
  return supplier->getDrawPage();
}

std::shared_ptr<CalcCharts::Item> CalcCharts::itemFor(const uno::Reference<css::drawing::XShape>& shape) {
  auto item = std::make_shared<Item>();
  item->shape = shape;
  item->name = nameOf(shape);
  item->type = kindOf(shape);
  if (const auto document = chartIn(shape); document.is()) {
    item->type = mervane::charts::number::shapeIsChart;
    item->chart = readChart(session(), document);
    item->chart->name = item->name;
  }
  return item;
}

const CalcCharts::Items& CalcCharts::refreshed(std::int32_t sheet) {
  Items& known = items_[sheet];
  Items now;
  const uno::Reference<css::container::XIndexAccess> shapes(page(sheet), uno::UNO_QUERY_THROW);
  const sal_Int32 count = shapes->getCount();
  for (sal_Int32 i = 0; i < count; ++i) {
    const uno::Reference<css::drawing::XShape> shape(shapes->getByIndex(i), uno::UNO_QUERY_THROW);
    const auto same = std::find_if(known.begin(), known.end(), [&](const auto& item) { return item->shape == shape; });
    now.push_back(same != known.end() ? *same : itemFor(shape));
    if (now.back()->chart) now.back()->chart->sheet = sheet;
  }
  for (const auto& item : known) {
    if (std::find(now.begin(), now.end(), item) != now.end()) continue;
    item->deleted = true;
    if (item->chart) item->chart->deleted = true;
  }
  known = std::move(now);
  return known;
}

std::vector<std::shared_ptr<DrawingItem>> CalcCharts::items(std::int32_t sheet) {
  return inOffice("tell what lies in a sheet", [&]() -> std::vector<std::shared_ptr<DrawingItem>> {
    const Items& items = refreshed(sheet);
    return {items.begin(), items.end()};
  });
}

std::shared_ptr<CalcCharts::Item> CalcCharts::itemOf(const Chart& chart) {
  for (const auto& item : refreshed(chart.sheet)) {
    if (item->chart.get() == &chart) return item;
  }
  refuse("The chart has been deleted.");
}

std::string CalcCharts::freeName(std::int32_t sheet) {
  const Items& items = refreshed(sheet);
  const uno::Reference<css::table::XTableChartsSupplier> supplier(session().sheetAt(sheet), uno::UNO_QUERY_THROW);
  const auto charts = supplier->getCharts();
  for (int i = 1;; ++i) {
    const std::string name = "Chart " + std::to_string(i);
    const bool isTaken = std::any_of(items.begin(), items.end(), [&](const auto& item) { return item->name == name; });
    if (!isTaken && !charts->hasByName(toOffice(name))) return name;
  }
}

void CalcCharts::embed(const std::shared_ptr<Chart>& chart, std::int32_t sheet) {
  if (chart->sheet != Chart::ownSheet) refuse("The chart lies in a worksheet already.");
  inOffice("put a chart into a sheet", [&] {
    session().facts().requireUnprotected(sheet, "changes of charts");
    const std::string name = freeName(sheet);
    const uno::Reference<css::table::XTableChartsSupplier> supplier(session().sheetAt(sheet), uno::UNO_QUERY_THROW);
    const css::awt::Rectangle place{toHundredths(newChartLeft), toHundredths(newChartTop),
                                    toHundredths(mervane::charts::defaultChartWidth),
                                    toHundredths(mervane::charts::defaultChartHeight)};
    supplier->getCharts()->addNewByName(toOffice(name), place, {}, false, false);
    const uno::Reference<css::container::XIndexAccess> shapes(page(sheet), uno::UNO_QUERY_THROW);
    auto item = std::make_shared<Item>();
    item->shape.set(shapes->getByIndex(shapes->getCount() - 1), uno::UNO_QUERY_THROW);
    item->name = name;
    item->chart = chart;
    const uno::Reference<css::container::XNamed> named(item->shape, uno::UNO_QUERY_THROW);
    named->setName(toOffice(name));
    chart->name = name;
    chart->sheet = sheet;
    items_[sheet].push_back(item);
  });
  active_ = chart;
  touched(*chart);
  session().activateSheet(sheet);
}

void CalcCharts::remove(const std::shared_ptr<Chart>& chart) {
  inOffice("delete a chart", [&] {
    const auto item = itemOf(*chart);
    session().facts().requireUnprotected(chart->sheet, "changes of charts");
    page(chart->sheet)->remove(item->shape);
    item->deleted = true;
    chart->deleted = true;
    std::erase(items_[chart->sheet], item);
  });
  changed_.erase(chart.get());
  if (active_ == chart) active_.reset();
}

Box CalcCharts::boxOf(std::int32_t, const DrawingItem& item) {
  session().settle();
  return inOffice("tell where a shape lies", [&] { return boxOfShape(static_cast<const Item&>(item).shape); });
}

void CalcCharts::move(std::int32_t sheet, DrawingItem& item, const Box& box) {
  session().settle();
  inOffice("move a shape", [&] {
    session().facts().requireUnprotected(sheet, "changes of charts");
    const auto& shape = static_cast<Item&>(item).shape;
    shape->setSize({toHundredths(box.width), toHundredths(box.height)});
    shape->setPosition({toHundredths(box.left), toHundredths(box.top)});
  });
}

Box CalcCharts::boxOf(const Chart& chart) {
  if (chart.sheet == Chart::ownSheet) {
    return {0.0, 0.0, mervane::charts::defaultChartWidth, mervane::charts::defaultChartHeight};
  }
  return inOffice("tell where a chart lies", [&] { return boxOfShape(itemOf(chart)->shape); });
}

void CalcCharts::touched(Chart& chart) {
  if (!chart.foreign && !chart.deleted) changed_.insert(&chart);
}

void CalcCharts::draw() {
  std::optional<Failure> failure;
  const auto changed = std::exchange(changed_, {});
  for (const auto& [sheet, items] : items_) {
    for (const auto& item : items) {
      if (!item->chart || item->deleted || !changed.contains(item->chart.get())) continue;
      try {
        inOffice("draw the chart \"" + item->name + "\"", [&] {
          const Box box = boxOfShape(item->shape);
          drawChart(session(), chartIn(item->shape), *item->chart, {box.width, box.height});
        });
      } catch (const Failure& one) {
        if (!failure) failure = one;
      }
    }
  }
  if (failure) throw Failure(*failure);
}

}  // namespace mervane::calc
