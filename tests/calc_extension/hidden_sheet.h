#pragma once

#include <gtest/gtest.h>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "calc/office.h"
#include "tests/calc_extension/office_window_user.h"

namespace mervane::addin {

/// A new spreadsheet that nobody sees: a heading over names, three columns of numbers and notes, from B2 to F5.
class HiddenSheet : public testing::Test {
 protected:
  HiddenSheet() {
    uno::Sequence<star::beans::PropertyValue> hidden(1);
    hidden[0].Name = "Hidden";
    hidden[0].Value <<= true;
    const auto desktop = star::frame::Desktop::create(tests::testedOffice().office.context);
    document.set(desktop->loadComponentFromURL("private:factory/scalc", "_blank", 0, hidden), uno::UNO_QUERY_THROW);
    const uno::Reference<star::sheet::XSpreadsheetDocument> book(document, uno::UNO_QUERY_THROW);
    sheet.set(book->getSheets()->getByName(book->getSheets()->getElementNames()[0]), uno::UNO_QUERY_THROW);
    uno::Sequence<uno::Sequence<uno::Any>> rows(4);
    for (sal_Int32 row = 0; row < 4; ++row) {
      rows[row] = uno::Sequence<uno::Any>(5);
      for (sal_Int32 column = 0; column < 5; ++column) {
        const bool text = row == 0 || column == 0 || column == 4;
        rows[row][column] = text ? uno::Any(rtl::OUString("text")) : uno::Any(row + column / 10.0);
      }
    }
    const uno::Reference<star::sheet::XCellRangeData> cells(sheet->getCellRangeByPosition(1, 1, 5, 4),
                                                            uno::UNO_QUERY_THROW);
    cells->setDataArray(rows);
  }
  ~HiddenSheet() override {
    const uno::Reference<star::util::XCloseable> closing(document, uno::UNO_QUERY_THROW);
    closing->close(true);
  }

  void rename(const std::string& name) {
    const uno::Reference<star::container::XNamed> named(sheet, uno::UNO_QUERY_THROW);
    named->setName(toOffice(name));
  }
  void select(sal_Int32 left, sal_Int32 top, sal_Int32 right, sal_Int32 bottom) {
    const uno::Reference<star::view::XSelectionSupplier> supplier(document->getCurrentController(),
                                                                  uno::UNO_QUERY_THROW);
    supplier->select(uno::Any(sheet->getCellRangeByPosition(left, top, right, bottom)));
  }

  uno::Reference<star::frame::XModel> document;
  uno::Reference<star::sheet::XSpreadsheet> sheet;
};

}  // namespace mervane::addin
