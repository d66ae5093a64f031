#include "calc/chart_memory.h"

#include <algorithm>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/frame/XLoadable.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/io/XSeekable.hpp>
#include <com/sun/star/io/XStream.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <utility>

#include "calc/border.h"

namespace mervane::addin {

namespace {

using Properties = uno::Reference<star::beans::XPropertySet>;
using Shape = uno::Reference<star::drawing::XShape>;
using Spreadsheet = uno::Reference<star::sheet::XSpreadsheet>;

constexpr const char* chartClass = "12DCAE26-281F-416F-a234-c3086127382e";
constexpr const char* chartFormat = "StarOffice XML (Chart)";
constexpr const char* ownStream = "private:stream";

star::beans::PropertyValue argument(const char* name, const uno::Any& value) {
  return {rtl::OUString::createFromAscii(name), 0, value, star::beans::PropertyState_DIRECT_VALUE};
}

uno::Sequence<star::beans::PropertyValue> chartFile(const char* streamName, const uno::Any& stream) {
  const star::beans::PropertyValue settings[] = {
      argument(streamName, stream), argument("FilterName", uno::Any(rtl::OUString::createFromAscii(chartFormat))),
      argument("URL", uno::Any(rtl::OUString::createFromAscii(ownStream)))};
  return {settings, 3};
}

uno::Sequence<sal_Int8> stored(const Office& office, const Properties& shape) {
  const uno::Reference<star::frame::XStorable> chart(shape->getPropertyValue("Model"), uno::UNO_QUERY_THROW);
  const auto file = office.create<star::io::XStream>("com.sun.star.io.TempFile");
  chart->storeToURL(rtl::OUString::createFromAscii(ownStream),
                    chartFile("OutputStream", uno::Any(file->getOutputStream())));
  const uno::Reference<star::io::XSeekable> place(file, uno::UNO_QUERY_THROW);
  const auto length = static_cast<sal_Int32>(place->getLength());
  place->seek(0);
  uno::Sequence<sal_Int8> contents;
  file->getInputStream()->readBytes(contents, length);
  return contents;
}

template <class Value>
Value valueOf(const Properties& object, const char* name) {
  Value value{};
  object->getPropertyValue(rtl::OUString::createFromAscii(name)) >>= value;
  return value;
}

uno::Any valueIfKnown(const Properties& object, const char* name) {
  const auto property = rtl::OUString::createFromAscii(name);
  return object->getPropertySetInfo()->hasPropertyByName(property) ? object->getPropertyValue(property) : uno::Any();
}

uno::Reference<star::drawing::XDrawPage> pageOf(const Spreadsheet& sheet) {
  const uno::Reference<star::drawing::XDrawPageSupplier> supplier(sheet, uno::UNO_QUERY_THROW);
  return {supplier->getDrawPage(), uno::UNO_SET_THROW};
}

/// The shapes of the charts, from the back to the front.
std::vector<Shape> chartShapes(const Spreadsheet& sheet) {
  const uno::Reference<star::table::XTableChartsSupplier> supplier(sheet, uno::UNO_QUERY_THROW);
  const uno::Reference<star::table::XTableCharts> charts(supplier->getCharts(), uno::UNO_SET_THROW);
  const auto page = pageOf(sheet);
  std::vector<Shape> shapes;
  for (sal_Int32 i = 0; i < page->getCount(); ++i) {
    const Shape shape(page->getByIndex(i), uno::UNO_QUERY_THROW);
    const Properties properties(shape, uno::UNO_QUERY_THROW);
    if (!properties->getPropertySetInfo()->hasPropertyByName("PersistName")) continue;
    if (charts->hasByName(valueOf<rtl::OUString>(properties, "PersistName"))) shapes.push_back(shape);
  }
  return shapes;
}

}  // namespace

ChartMemory::ChartMemory(const Office& office, uno::Reference<star::frame::XModel> document, const Spreadsheet& sheet)
    : office_(office), document_(std::move(document)) {
  for (const Shape& shape : chartShapes(sheet)) {
    const Properties properties(shape, uno::UNO_QUERY_THROW);
    Chart chart;
    chart.shape = shape;
    chart.name = valueOf<rtl::OUString>(properties, "Name");
    chart.place = shape->getPosition();
    chart.size = shape->getSize();
    chart.anchor = valueIfKnown(properties, "Anchor");
    chart.resizes = valueIfKnown(properties, "ResizeWithCell");
    atBorder([&] { chart.contents = stored(office, properties); });
    charts_.push_back(std::move(chart));
  }
}

void ChartMemory::restore(const Spreadsheet& sheet) const {
  const std::vector<Shape> present = chartShapes(sheet);
  for (const Shape& shape : present) {
    const bool isKnown = std::ranges::any_of(charts_, [&](const Chart& one) { return one.shape == shape; });
    // By its shape: the collection of charts frees a chart twice while the office records no changes.
    if (!isKnown) pageOf(sheet)->remove(shape);
  }
  for (const Chart& chart : charts_) {
    const bool stayed = std::ranges::any_of(present, [&](const Shape& one) { return one == chart.shape; });
    if (!stayed && chart.contents.hasElements()) atBorder([&] { makeAnew(sheet, chart); });
  }
}

void ChartMemory::makeAnew(const Spreadsheet& sheet, const Chart& chart) const {
  const uno::Reference<star::lang::XMultiServiceFactory> factory(document_, uno::UNO_QUERY_THROW);
  const Shape shape(factory->createInstance("com.sun.star.drawing.OLE2Shape"), uno::UNO_QUERY_THROW);
  pageOf(sheet)->add(shape);
  const Properties properties(shape, uno::UNO_QUERY_THROW);
  set(properties, "CLSID", uno::Any(rtl::OUString::createFromAscii(chartClass)));
  const auto file = office_.create<star::io::XStream>("com.sun.star.io.TempFile");
  file->getOutputStream()->writeBytes(chart.contents);
  uno::Reference<star::io::XSeekable>(file, uno::UNO_QUERY_THROW)->seek(0);
  const uno::Reference<star::frame::XLoadable> model(properties->getPropertyValue("Model"), uno::UNO_QUERY_THROW);
  model->load(chartFile("InputStream", uno::Any(file->getInputStream())));
  set(properties, "Name", uno::Any(chart.name));
  if (chart.anchor.hasValue()) setIfKnown(properties, "Anchor", chart.anchor);
  if (chart.resizes.hasValue()) setIfKnown(properties, "ResizeWithCell", chart.resizes);
  shape->setSize(chart.size);
  shape->setPosition(chart.place);
}

}  // namespace mervane::addin
