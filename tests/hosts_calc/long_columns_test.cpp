#include <chrono>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XSheetAnnotationAnchor.hpp>
#include <com/sun/star/sheet/XSheetAnnotationsSupplier.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XSimpleText.hpp>
#include <functional>
#include <random>

#include "spreadsheet/application.h"
#include "tests/hosts_calc/calc_under_test.h"

namespace mervane::tests {
namespace {

namespace css = com::sun::star;
namespace uno = com::sun::star::uno;

constexpr sal_Int32 rows = 3000;

class LongColumns : public testing::Test {
 protected:
  sheet::Range range(const std::string& reference) { return sheet::Application(host.application()).Range(reference); }

  uno::Reference<css::beans::XPropertySet> column(sal_Int32 index) {
    const uno::Reference<css::table::XColumnRowRange> all(host.sheet(0), uno::UNO_QUERY_THROW);
    return {all->getColumns()->getByIndex(index), uno::UNO_QUERY_THROW};
  }
  sal_Int32 width(sal_Int32 index) {
    sal_Int32 width = 0;
    column(index)->getPropertyValue("Width") >>= width;
    return width;
  }
  sal_Int32 widthByOffice(sal_Int32 index) {
    column(index)->setPropertyValue("OptimalWidth", uno::Any(true));
    return width(index);
  }
  void fill(const std::string& area, const std::function<uno::Any(sal_Int32)>& value) {
    uno::Sequence<uno::Sequence<uno::Any>> values(rows);
    for (sal_Int32 i = 0; i < rows; ++i) {
      const uno::Any one = value(i);
      values.getArray()[i] = uno::Sequence<uno::Any>(&one, 1);
    }
    uno::Reference<css::sheet::XCellRangeData>(host.cells(area), uno::UNO_QUERY_THROW)->setDataArray(values);
  }

  CalcUnderTest host{{{"Sheet1", {}}}};
  std::mt19937 chance{7};  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same numbers in each run
};

TEST_F(LongColumns, AreFittedAsWideAsTheOfficeMakesThem) {
  std::uniform_int_distribution<int> numbers(-99999, 199999);
  fill("A1:A3000", [&](sal_Int32) { return uno::Any(numbers(chance) / 10000.0); });
  fill("B1:B3000", [&](sal_Int32) { return uno::Any(double{1.0} * numbers(chance)); });
  fill("C1:C3000", [&](sal_Int32) { return uno::Any(numbers(chance) / 7.0); });
  fill("D1:D3000", [&](sal_Int32 i) {
    return i % 1000 == 5 ? uno::Any(rtl::OUString("a text among the numbers")) : uno::Any(numbers(chance) * 1e12);
  });
  fill("E1:E3000", [&](sal_Int32) { return uno::Any(std::abs(numbers(chance)) / 1000.0); });
  fill("F1:F3000", [&](sal_Int32) { return uno::Any(std::abs(numbers(chance)) / 1000.0); });
  fill("G1:G3000", [&](sal_Int32) { return uno::Any(11.11); });
  fill("H1:H3000", [&](sal_Int32 i) { return uno::Any(i == 2000 ? 1234567.25 : 1.0 * (i % 10)); });
  fill("I1:I3000", [&](sal_Int32) { return uno::Any(std::abs(numbers(chance)) * 1000.0 / 7.0); });
  fill("J1:J3000", [&](sal_Int32) { return uno::Any(numbers(chance) * 9000.0 + 0.01 * (numbers(chance) % 100)); });
  fill("K1:K3000", [&](sal_Int32) { return uno::Any(std::abs(numbers(chance)) / 7e6); });
  range("E1500").Font().Bold(true);
  range("F20:F30").NumberFormat("0.00%");
  range("F1000:F2000").Interior().ColorIndex(6);
  range("F1000").Value(Variant("Cluster 1 average"));
  range("F1000").Font().Bold(true);
  range("A1:L1").Columns().EntireColumn().AutoFit();
  for (sal_Int32 index = 0; index < 12; ++index) {
    const sal_Int32 fitted = width(index);
    EXPECT_EQ(fitted, widthByOffice(index)) << "column " << index;
  }
  const uno::Reference<css::sheet::XSpreadsheetDocument> document(host.document(), uno::UNO_QUERY_THROW);
  const uno::Reference<css::container::XIndexAccess> sheets(document->getSheets(), uno::UNO_QUERY_THROW);
  EXPECT_EQ(sheets->getCount(), 1) << "what was put aside for it is gone";
}

TEST_F(LongColumns, WithAFilterOrAFormulaAreFittedAsWideAsTheOfficeMakesThem) {
  fill("A1:A3000", [&](sal_Int32 i) { return i == 0 ? uno::Any(rtl::OUString("Number")) : uno::Any(1.0 * (i % 9)); });
  fill("C1:C3000", [&](sal_Int32 i) { return uno::Any(1.0 * (i % 9)); });
  range("A1:A3000").AutoFilter();
  range("C3000").Value(Variant("=1000000/8"));
  range("A1:C1").Columns().EntireColumn().AutoFit();
  for (const sal_Int32 index : {0, 2}) {
    const sal_Int32 fitted = width(index);
    EXPECT_EQ(fitted, widthByOffice(index)) << "column " << index;
  }
}

TEST_F(LongColumns, AreEmptiedInTheOrderOfWritingAndKeepTheirNotes) {
  const uno::Reference<css::sheet::XSheetAnnotationsSupplier> supplier(host.sheet(0), uno::UNO_QUERY_THROW);
  fill("A1:A3000", [&](sal_Int32 i) { return uno::Any(1.0 * i); });
  supplier->getAnnotations()->insertNew({0, 0, 1}, "kept");
  for (std::int32_t row = 1; row <= 4; ++row) range("A1").Cells(row, 1).Value(Variant());
  range("A3").Value(Variant(7.0));
  range("A4").Value(Variant(8.0));
  range("A4").Value(Variant());
  EXPECT_TRUE(range("A1").Value().isEmpty());
  EXPECT_TRUE(range("A2").Value().isEmpty());
  EXPECT_EQ(range("A3").Value(), Variant(7.0));
  EXPECT_TRUE(range("A4").Value().isEmpty());
  EXPECT_EQ(range("A5").Value(), Variant(4.0));
  const uno::Reference<css::sheet::XSheetAnnotationAnchor> cell(host.cells("A2")->getCellByPosition(0, 0),
                                                                uno::UNO_QUERY_THROW);
  const uno::Reference<css::text::XSimpleText> note(cell->getAnnotation(), uno::UNO_QUERY_THROW);
  EXPECT_EQ(note->getString(), "kept");
}

TEST_F(LongColumns, AreWrittenWithTheirNotesKept) {
  const uno::Reference<css::sheet::XSheetAnnotationsSupplier> supplier(host.sheet(0), uno::UNO_QUERY_THROW);
  for (const sal_Int32 row : {0, 2, 3, 5}) supplier->getAnnotations()->insertNew({0, 0, row}, "kept");
  for (std::int32_t row = 1; row <= 6; ++row) {
    range("A1").Cells(row, 1).Value(row == 4 ? Variant("007") : Variant(1.5 * row));
  }
  host.host().flush();
  const uno::Reference<css::container::XIndexAccess> notes(supplier->getAnnotations(), uno::UNO_QUERY_THROW);
  EXPECT_EQ(notes->getCount(), 4);
  for (std::int32_t row = 1; row <= 6; ++row) {
    EXPECT_EQ(range("A1").Cells(row, 1).Value(), row == 4 ? Variant("007") : Variant(1.5 * row)) << row;
  }
}

/// As sorting borrows the column beside the inputs: each formula is read when those above it have been written over.
TEST_F(LongColumns, OfFormulasAreReadAndWrittenInTurnWithTheValueThatEachHasThen) {
  constexpr std::int32_t formulas = 60;
  for (std::int32_t row = 1; row <= formulas; ++row) {
    range("A1").Cells(row, 1).Value(Variant(1.0 * row));
    // Every third one refers to the one above it, which is a written value by then.
    const std::string at = std::to_string(row);
    const bool refersUp = row % 3 == 0;
    range("B1").Cells(row, 1).Value(Variant(refersUp ? "=B" + std::to_string(row - 1) + "+A" + at : "=2*A" + at));
  }
  for (std::int32_t row = 1; row <= formulas; ++row) {
    const double wanted = row % 3 == 0 ? 1000.0 + row : 2.0 * row;
    EXPECT_EQ(range("B1").Cells(row, 1).Value(), Variant(wanted)) << row;
    range("B1").Cells(row, 1).Value(Variant(1000.0));
  }
  for (std::int32_t row = 1; row <= formulas; ++row) {
    EXPECT_EQ(range("B1").Cells(row, 1).Value(), Variant(1000.0)) << row;
  }
}

}  // namespace
}  // namespace mervane::tests
