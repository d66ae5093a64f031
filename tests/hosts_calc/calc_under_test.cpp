#include "tests/hosts_calc/calc_under_test.h"

#include <unistd.h>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/chart2/DataPointLabel.hpp>
#include <com/sun/star/chart2/XChartDocument.hpp>
#include <com/sun/star/chart2/XChartTypeContainer.hpp>
#include <com/sun/star/chart2/XCoordinateSystemContainer.hpp>
#include <com/sun/star/chart2/XDataSeriesContainer.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

#include "mervane/convert.h"
#include "spreadsheet/cell_address.h"
#include "tests/support/real_regular_expressions.h"

namespace mervane::tests {

namespace css = com::sun::star;
namespace uno = com::sun::star::uno;

namespace {

const char* formulaOf(const ErrorValue& error) {
  switch (error.code) {
    case 2000:
      return "=#NULL!";
    case 2007:
      return "=#DIV/0!";
    case 2015:
      return "=#VALUE!";
    case 2023:
      return "=#REF!";
    case 2029:
      return "=#NAME?";
    case 2036:
      return "=#NUM!";
    default:
      return "=NA()";
  }
}

void fill(const uno::Reference<css::frame::XModel>& document, const uno::Reference<css::table::XCell>& cell,
          const MadeCell& made) {
  if (!made.formula.empty()) {
    cell->setFormula(calc::toOffice(made.formula));
  } else if (const auto* text = made.value.getIf<std::string>()) {
    // Through the data array a text stays a text, whatever it looks like.
    const uno::Any value(calc::toOffice(*text));
    const uno::Sequence<uno::Any> row(&value, 1);
    const uno::Reference<css::sheet::XCellRangeData> data(cell, uno::UNO_QUERY_THROW);
    data->setDataArray(uno::Sequence<uno::Sequence<uno::Any>>(&row, 1));
  } else if (const auto* truth = made.value.getIf<bool>()) {
    cell->setFormula(*truth ? rtl::OUString("=TRUE()") : rtl::OUString("=FALSE()"));
  } else if (const auto* error = made.value.getIf<ErrorValue>()) {
    cell->setFormula(rtl::OUString::createFromAscii(formulaOf(*error)));
  } else if (const auto* date = made.value.getIf<Date>()) {
    cell->setValue(date->serial);
    const uno::Reference<css::util::XNumberFormatsSupplier> supplier(document, uno::UNO_QUERY_THROW);
    const css::lang::Locale english("en", "US", rtl::OUString());
    sal_Int32 key = supplier->getNumberFormats()->queryKey("MM/DD/YYYY", english, false);
    if (key < 0) key = supplier->getNumberFormats()->addNew("MM/DD/YYYY", english);
    const uno::Reference<css::beans::XPropertySet> properties(cell, uno::UNO_QUERY_THROW);
    properties->setPropertyValue("NumberFormat", uno::Any(key));
  } else if (!made.value.isEmpty()) {
    cell->setValue(toDouble(made.value, englishLocale()));
  }
}

std::filesystem::path temporaryFile(const std::string& ending) {
  static int count = 0;
  const std::string name = "mervane-calc-test-" + std::to_string(::getpid()) + "-" + std::to_string(++count);
  return std::filesystem::temp_directory_path() / (name + ending);
}

}  // namespace

CalcUnderTest::CalcUnderTest(const std::vector<MadeSheet>& sheets, std::string ending)
    : document_(sharedOffice().create()), ending_(std::move(ending)) {
  const uno::Reference<css::sheet::XSpreadsheetDocument> book(document_, uno::UNO_QUERY_THROW);
  const auto all = book->getSheets();
  const rtl::OUString born = all->getElementNames()[0];
  all->insertNewByName("being made", 0);
  all->removeByName(born);
  sal_Int16 position = 0;
  for (const MadeSheet& made : sheets) {
    all->insertNewByName(calc::toOffice(made.name), position);
    const auto target = sheet(position++);
    for (std::size_t row = 0; row < made.rows.size(); ++row) {
      for (std::size_t column = 0; column < made.rows[row].size(); ++column) {
        const auto cell = target->getCellByPosition(static_cast<sal_Int32>(column), static_cast<sal_Int32>(row));
        fill(document_, cell, made.rows[row][column]);
      }
    }
  }
  all->removeByName("being made");
  const uno::Reference<css::sheet::XSpreadsheetView> view(document_->getCurrentController(), uno::UNO_QUERY_THROW);
  view->setActiveSheet(sheet(0));
  host_ = std::make_unique<calc::CalcHost>(sharedOffice().context(), document_);
}

CalcUnderTest::CalcUnderTest(const uno::Reference<css::frame::XModel>& document)
    : document_(document), host_(std::make_unique<calc::CalcHost>(sharedOffice().context(), document)) {}

CalcUnderTest::~CalcUnderTest() {
  host_.reset();
  calc::Office::close(document_);
}

void CalcUnderTest::reopen() {
  reopenAs(ending_);
}

void CalcUnderTest::reopenAs(const std::string& ending) {
  const std::filesystem::path file = temporaryFile(ending);
  host_->flush();
  calc::Office::store(document_, file);
  host_.reset();
  calc::Office::close(document_);
  document_ = sharedOffice().open(file);
  std::filesystem::remove(file);
  host_ = std::make_unique<calc::CalcHost>(sharedOffice().context(), document_);
}

uno::Reference<css::sheet::XSpreadsheet> CalcUnderTest::sheet(std::int32_t position) {
  const uno::Reference<css::sheet::XSpreadsheetDocument> book(document_, uno::UNO_QUERY_THROW);
  const uno::Reference<css::container::XIndexAccess> sheets(book->getSheets(), uno::UNO_QUERY_THROW);
  return {sheets->getByIndex(position), uno::UNO_QUERY_THROW};
}

uno::Reference<css::table::XCellRange> CalcUnderTest::cells(const std::string& area) {
  return sheet(0)->getCellRangeByName(calc::toOffice(area));
}

std::string CalcUnderTest::selection() {
  const uno::Reference<css::sheet::XCellRangeAddressable> range(document_->getCurrentSelection(), uno::UNO_QUERY_THROW);
  const css::table::CellRangeAddress at = range->getRangeAddress();
  return sheet::a1(sheet::CellArea{at.StartRow + 1, at.StartColumn + 1, at.EndRow + 1, at.EndColumn + 1});
}

bool CalcUnderTest::showsDataLabels() {
  host_->flush();
  const uno::Reference<css::drawing::XDrawPageSupplier> supplier(sheet(0), uno::UNO_QUERY_THROW);
  const uno::Reference<css::container::XIndexAccess> shapes(supplier->getDrawPage(), uno::UNO_QUERY_THROW);
  const uno::Reference<css::beans::XPropertySet> shape(shapes->getByIndex(0), uno::UNO_QUERY_THROW);
  const uno::Reference<css::chart2::XChartDocument> chart(shape->getPropertyValue("Model"), uno::UNO_QUERY_THROW);
  const uno::Reference<css::chart2::XCoordinateSystemContainer> plot(chart->getFirstDiagram(), uno::UNO_QUERY_THROW);
  const uno::Reference<css::chart2::XChartTypeContainer> types(plot->getCoordinateSystems()[0], uno::UNO_QUERY_THROW);
  const uno::Reference<css::chart2::XDataSeriesContainer> series(types->getChartTypes()[0], uno::UNO_QUERY_THROW);
  const uno::Reference<css::beans::XPropertySet> first(series->getDataSeries()[0], uno::UNO_QUERY_THROW);
  css::chart2::DataPointLabel label;
  first->getPropertyValue("Label") >>= label;
  return label.ShowNumber;
}

const HostKind& calcKind() {
  static const HostKind kind{
      "Calc",
      [](const std::vector<MadeSheet>& sheets) -> std::unique_ptr<HostUnderTest> {
        return std::make_unique<CalcUnderTest>(sheets);
      },
      &realRegularExpressions,
  };
  return kind;
}

}  // namespace mervane::tests
