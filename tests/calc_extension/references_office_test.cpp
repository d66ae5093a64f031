#include <gtest/gtest.h>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XNamedRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "calc/references.h"
#include "tests/calc_extension/office_window_user.h"

namespace mervane::addin {
namespace {

using star::table::CellRangeAddress;

/// A new spreadsheet that nobody sees: a heading over names, three columns of numbers and notes, from B2 to F5.
class References : public testing::Test {
 protected:
  References() {
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
  ~References() override {
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

TEST_F(References, ARangeIsWrittenAsTheComponentReadsIt) {
  rename("Data");
  EXPECT_EQ(referenceText(document, CellRangeAddress(0, 1, 1, 4, 150)), "Data!B2:E151");
  EXPECT_EQ(referenceText(document, CellRangeAddress(0, 27, 8, 27, 8)), "Data!AB9");
  rename("My 'own' data");
  EXPECT_EQ(referenceText(document, CellRangeAddress(0, 0, 0, 0, 0)), "'My ''own'' data'!A1");
  rename("2024");
  EXPECT_EQ(referenceText(document, CellRangeAddress(0, 0, 0, 0, 0)), "'2024'!A1");
}

TEST_F(References, WhatThePickerWritesAndWhatTheDialogHoldsNameTheSameRange) {
  for (const char* name : {"Data", "My 'own' data"}) {
    rename(name);
    const CellRangeAddress range(0, 1, 2, 3, 5);
    for (const std::string& text : {pickerText(document, range), referenceText(document, range)}) {
      const auto found = rangeOf(document, text);
      ASSERT_TRUE(found) << text;
      EXPECT_EQ(referenceText(document, *found), referenceText(document, range)) << text;
    }
  }
}

TEST_F(References, ATextThatNamesNoRangeGivesNone) {
  for (const char* text : {"", "nonsense", "Nowhere!A1:B2", "A1:B2;C3"}) EXPECT_FALSE(rangeOf(document, text)) << text;
}

TEST_F(References, TheOfficesOwnNotationIsTurnedIntoTheComponents) {
  rename("Data");
  const std::pair<const char*, const char*> cases[] = {
      {"$Data.$B$2:$E$151", "Data!B2:E151"}, {"Data.B2", "Data!B2"},
      {"'Data'.$B$2:C9", "Data!B2:C9"},      {"$B$2:$C$12", "Data!B2:C12"},
      {"Data!$B$2:$E$20", "Data!B2:E20"},    {"  $Data.$C$3  ", "Data!C3"},
  };
  for (const auto& [typed, read] : cases) EXPECT_EQ(componentReference(document, typed), read) << typed;
  rename("It's.mine");
  EXPECT_EQ(componentReference(document, "$'It''s.mine'.$B$2:$C$3"), "'It''s.mine'!B2:C3");
}

TEST_F(References, WhatIsNoRangeHereAndWhatTheComponentReadsAlreadyStayAsTyped) {
  rename("Data");
  for (const char* text : {"", "nonsense", "Nowhere.B2:C3", "$Nowhere.$B$2", "'file:///a.ods'#$Data.B2", "data!b2:c9",
                           "B2", "Nowhere!B2:C3", "B2.5"}) {
    EXPECT_EQ(componentReference(document, text), text);
  }
}

TEST_F(References, WholeColumnsMeanTheirUsedCellsBelowTheHeadings) {
  rename("Data");
  EXPECT_EQ(componentReference(document, "C:E"), "Data!C3:E5");
  EXPECT_EQ(componentReference(document, "$Data.$C$1:$D$1048576"), "Data!C3:D5");
}

TEST_F(References, ANamedRangeIsTakenByItsName) {
  rename("Data");
  const uno::Reference<star::beans::XPropertySet> book(document, uno::UNO_QUERY_THROW);
  const uno::Reference<star::sheet::XNamedRanges> names(book->getPropertyValue("NamedRanges"), uno::UNO_QUERY_THROW);
  names->addNewByName("numbers", "$Data.$C$3:$E$5", star::table::CellAddress(0, 0, 0), 0);
  names->addNewByName("formula", "1+1", star::table::CellAddress(0, 0, 0), 0);
  EXPECT_EQ(componentReference(document, "numbers"), "Data!C3:E5");
  EXPECT_EQ(componentReference(document, "formula"), "formula");
}

TEST_F(References, OneSelectedCellProposesTheNumbersAroundIt) {
  rename("Data");
  select(3, 3, 3, 3);
  const auto proposal = proposeFromSelection(document);
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->inputs, "Data!C3:E5");
  EXPECT_EQ(proposal->outputs, "Data!H3");
}

TEST_F(References, ASelectedRangeIsTakenWithoutItsHeadingAndItsTexts) {
  rename("Data");
  select(1, 1, 4, 4);
  const auto proposal = proposeFromSelection(document);
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->inputs, "Data!C3:E5");
  select(2, 2, 3, 3);
  EXPECT_EQ(proposeFromSelection(document)->inputs, "Data!C3:D4");
}

TEST_F(References, WholeColumnsEndWithTheUsedCells) {
  rename("Data");
  select(2, 2, 3, 1048575);
  const auto proposal = proposeFromSelection(document);
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->inputs, "Data!C3:D5");
}

TEST_F(References, ResultsOfAnEarlierRunAreNotProposedAndTheNextRunWritesOverThem) {
  rename("Data");
  // Without the notes in F, as the labels of the blocks stand there.
  const auto put = [&](sal_Int32 column, sal_Int32 row, const uno::Any& value) {
    const uno::Reference<star::sheet::XCellRangeData> cell(sheet->getCellRangeByPosition(column, row, column, row),
                                                           uno::UNO_QUERY_THROW);
    const uno::Sequence<uno::Any> only(&value, 1);
    cell->setDataArray(uno::Sequence<uno::Sequence<uno::Any>>(&only, 1));
  };
  const auto text = [](const char* one) { return uno::Any(rtl::OUString::createFromAscii(one)); };
  for (sal_Int32 row = 1; row <= 4; ++row) put(5, row, text(""));
  for (sal_Int32 row = 5; row <= 6; ++row) {
    for (sal_Int32 column = 2; column <= 4; ++column) put(column, row, uno::Any(1.5));
    put(5, row, text(row == 5 ? "Cluster 1 weighted average (%)" : "Cluster 2 weighted average (%)"));
  }
  put(6, 1, text("Clusters"));
  for (sal_Int32 row = 2; row <= 4; ++row) put(6, row, uno::Any(1.0));
  for (const auto& [column, row] : {std::pair(1, 1), std::pair(3, 3), std::pair(6, 2), std::pair(5, 5)}) {
    select(column, row, column, row);
    const auto proposal = proposeFromSelection(document);
    ASSERT_TRUE(proposal) << column << " " << row;
    EXPECT_EQ(proposal->inputs, "Data!C3:E5");
    EXPECT_EQ(proposal->outputs, "Data!G3");
  }
  // A listing with a column for each cluster may be wider than the numbers.
  for (sal_Int32 cluster = 1; cluster <= 4; ++cluster) {
    put(5 + cluster, 1, text(("Cluster " + std::to_string(cluster)).c_str()));
    for (sal_Int32 row = 2; row <= 4; ++row) put(5 + cluster, row, uno::Any(row == cluster ? 1.0 : 0.0));
  }
  select(2, 2, 4, 4);
  const auto proposal = proposeFromSelection(document);
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->inputs, "Data!C3:E5");
  EXPECT_EQ(proposal->outputs, "Data!G3");
  select(1, 1, 1, 1);
  EXPECT_EQ(proposeFromSelection(document)->inputs, "Data!C3:E5");
}

TEST_F(References, ASelectionWithoutNumbersProposesNothing) {
  select(1, 1, 1, 4);
  EXPECT_FALSE(proposeFromSelection(document));
  select(20, 20, 20, 20);
  EXPECT_FALSE(proposeFromSelection(document));
}

}  // namespace
}  // namespace mervane::addin
