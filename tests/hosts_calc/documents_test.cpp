#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/util/Date.hpp>
#include <com/sun/star/util/XMergeable.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "mervane/runtime_errors.h"
#include "spreadsheet/application.h"
#include "tests/hosts_calc/calc_under_test.h"
#include "tests/support/failure_matchers.h"

namespace mervane::tests {
namespace {

namespace css = com::sun::star;
namespace uno = com::sun::star::uno;
using testing::HasSubstr;

/// What the statement raises is the application's own failure with this text in it.
template <class Statement>
void expectRefused(Statement&& statement, const std::string& text) {
  const auto failure = failureOf(std::forward<Statement>(statement));
  ASSERT_TRUE(failure.has_value()) << text;
  EXPECT_EQ(failure->number(), runtime::applicationDefined.number);
  EXPECT_THAT(failure->description(), HasSubstr(text));
}

class CalcDocument : public testing::Test {
 protected:
  static std::vector<MadeSheet> sheets() {
    return {{"Sheet1", {{"Name", "x", "y"}, {"c", 3.0, 30.0}, {"a", 1.0, 10.0}, {"b", 2.0, 20.0}}}};
  }
  sheet::Range range(const std::string& reference) { return sheet::Application(host.application()).Range(reference); }
  Variant value(const std::string& cell) { return range(cell).Value(); }
  void hideRow(sal_Int32 row) {
    const uno::Reference<css::table::XColumnRowRange> rows(host.sheet(0), uno::UNO_QUERY_THROW);
    const uno::Reference<css::beans::XPropertySet> one(rows->getRows()->getByIndex(row), uno::UNO_QUERY_THROW);
    one->setPropertyValue("IsVisible", uno::Any(false));
  }

  CalcUnderTest host{sheets()};
};

TEST_F(CalcDocument, AProtectedSheetRefusesValuesFormatsSortingAndCharts) {
  const uno::Reference<css::util::XProtectable> protectable(host.sheet(0), uno::UNO_QUERY_THROW);
  protectable->protect(rtl::OUString());
  expectRefused([&] { range("A2").Value(Variant(1.0)); }, "is on a protected sheet");
  expectRefused([&] { range("A2").Interior().ColorIndex(3); }, "does not allow changes of formats");
  expectRefused([&] { range("A2").Font().Bold(true); }, "does not allow changes of formats");
  expectRefused([&] { range("A2").NumberFormat("0.00%"); }, "does not allow changes of formats");
  expectRefused([&] { range("A2:C4").Sort(range("B2:B4"), 1); }, "does not allow sorting");
  expectRefused([&] { range("A1").AutoFilter(); }, "does not allow filters");
  expectRefused([&] { range("A1:C4").Columns().EntireColumn().AutoFit(); }, "does not allow changes of column widths");
  const sheet::Application application(host.application());
  application.Charts().Add();
  expectRefused([&] { application.ActiveChart().Location(2, "Sheet1"); }, "does not allow changes of charts");
  host.host().flush();
  EXPECT_EQ(host.cells("A2")->getCellByPosition(0, 0)->getFormula(), "c");
  protectable->unprotect(rtl::OUString());
}

TEST_F(CalcDocument, ACellThatIsCoveredByAMergeIsNotWritten) {
  const uno::Reference<css::util::XMergeable> merge(host.cells("B2:C3"), uno::UNO_QUERY_THROW);
  merge->merge(true);
  expectRefused([&] { range("C3").Value(Variant(1.0)); }, "covered by the merged cells B2:C3");
  expectRefused([&] { range("A2:C4").Sort(range("A2:A4"), 1); }, "the cells B2:C3 are merged");
  range("B2").Value(Variant(7.0));
  EXPECT_EQ(value("B2"), Variant(7.0));
}

TEST_F(CalcDocument, APartOfAnArrayFormulaIsNotWrittenAndNotSorted) {
  const uno::Reference<css::sheet::XArrayFormulaRange> array(host.cells("E2:E4"), uno::UNO_QUERY_THROW);
  array->setArrayFormula("=B2:B4*2");
  expectRefused([&] { range("E3").Value(Variant(1.0)); }, "part of the array formula in E2:E4");
  expectRefused([&] { range("A2:E4").Sort(range("B2:B4"), 1); }, "E2:E4 holds an array formula");
  EXPECT_EQ(value("E3"), Variant(2.0));
}

TEST_F(CalcDocument, HiddenRowsAreReadWrittenAndSortedLikeAllOthers) {
  hideRow(2);
  EXPECT_EQ(value("B3"), Variant(1.0));
  range("B3").Value(Variant(9.0));
  range("A2:C4").Sort(range("B2:B4"), 1);
  EXPECT_EQ(value("A2"), Variant("b"));
  EXPECT_EQ(value("A3"), Variant("c"));
  EXPECT_EQ(value("A4"), Variant("a"));
}

TEST_F(CalcDocument, ABorrowedColumnOfDatesGivesItsNumbersAndItsDatesBackInEitherCalendar) {
  const uno::Reference<css::beans::XPropertySet> document(host.document(), uno::UNO_QUERY_THROW);
  range("D2:D4").NumberFormat("yyyy\\-mm\\-dd");
  for (const sal_Int16 year : {sal_Int16{1899}, sal_Int16{1904}}) {
    SCOPED_TRACE(year);
    document->setPropertyValue(
        "NullDate", year == 1904 ? uno::Any(css::util::Date(1, 1, 1904)) : uno::Any(css::util::Date(30, 12, 1899)));
    std::int32_t key = 3;
    std::vector<Variant> saved;
    for (const char* cell : {"D2", "D3", "D4"}) {
      range(cell).Value(Variant(Date{45000.0 + key}));
      saved.push_back(value(cell));
      EXPECT_EQ(saved.back(), Variant(Date{45000.0 + key}));
      range(cell).Value(Variant(key--));
    }
    range("A2:D4").Sort(range("D2:D4"), 1);
    for (std::size_t i = 0; i < saved.size(); ++i) {
      const std::string cell = "D" + std::to_string(i + 2);
      EXPECT_EQ(value(cell), Variant(static_cast<double>(i + 1)));
      range(cell).Value(saved[i]);
      EXPECT_EQ(value(cell), saved[i]);
    }
  }
}

TEST_F(CalcDocument, APlainNumberIsADateOnceItsCellGetsADatesFormatOrIsSortedAmongOthers) {
  range("D2").NumberFormat("yyyy\\-mm\\-dd");
  range("D2").Value(Variant(7.0));
  EXPECT_EQ(value("D2"), Variant(7.0));
  range("D2").NumberFormat("yyyy\\-mm\\-dd");
  EXPECT_EQ(value("D2"), Variant(Date{7.0}));
  range("D2").Value(Variant(7.0));
  range("A2:D4").Sort(range("B2:B4"), 1);
  EXPECT_EQ(value("D4"), Variant(Date{7.0}));
}

TEST_F(CalcDocument, AFilterIsSwitchedOnAroundTheCellAndOffAgain) {
  const sheet::Worksheet sheet = sheet::Application(host.application()).ActiveSheet();
  EXPECT_FALSE(sheet.AutoFilterMode());
  range("B1").AutoFilter();
  EXPECT_TRUE(sheet.AutoFilterMode());
  range("B1").AutoFilter();
  EXPECT_FALSE(sheet.AutoFilterMode());
  expectRefused([&] { range("J20").AutoFilter(); }, "there is no table around it");
}

TEST_F(CalcDocument, TheLongestTextOfACellIsKeptAndALongerOneRefused) {
  const std::string longest(32767, 'x');
  range("A2").Value(Variant(longest));
  EXPECT_EQ(value("A2"), Variant(longest));
  expectRefused([&] { range("A2").Value(Variant(longest + "x")); }, "longer than a cell can hold");
  expectRefused([&] { range("A2").Value(Variant(std::string("\xff\xfe"))); }, "no characters");
}

TEST_F(CalcDocument, TextsThatLookLikeSomethingElseStayTexts) {
  for (const char* text : {"12", "'12", "1/2/2020", "TRUE", " ", "a\nb", "="}) {
    range("A2").Value(Variant(text));
    EXPECT_EQ(value("A2"), Variant(text));
  }
}

TEST_F(CalcDocument, AFormulaFollowsAWriteThatIsStillWaiting) {
  range("D2").Value(Variant("=B2*2"));
  EXPECT_EQ(value("D2"), Variant(6.0));
  range("B2").Value(Variant(5.0));
  EXPECT_EQ(value("D2"), Variant(10.0));
}

TEST_F(CalcDocument, WhatWasWrittenIsInTheDocumentAfterAFlush) {
  range("B2").Value(Variant(5.0));
  range("B2").Interior().ColorIndex(36);
  host.host().flush();
  EXPECT_EQ(host.cells("B2")->getCellByPosition(0, 0)->getValue(), 5.0);
  const uno::Reference<css::beans::XPropertySet> cell(host.cells("B2"), uno::UNO_QUERY_THROW);
  sal_Int32 color = 0;
  cell->getPropertyValue("CellBackColor") >>= color;
  EXPECT_EQ(color, 0xFFFF99);
}

TEST_F(CalcDocument, WhatTheUserChangedMeanwhileIsReadAfterAFlush) {
  EXPECT_EQ(value("B2"), Variant(3.0));
  host.cells("B2")->getCellByPosition(0, 0)->setValue(8.0);
  host.host().flush();
  EXPECT_EQ(value("B2"), Variant(8.0));
}

TEST_F(CalcDocument, ADocumentThatIsClosedDuringTheRunIsAFailureAndNoMore) {
  const sheet::Range cell = range("B2");
  EXPECT_EQ(cell.Value(), Variant(3.0));
  cell.Value(Variant(4.0));
  calc::Office::close(host.document());
  EXPECT_TRUE(failureOf([&] { static_cast<void>(range("A3").Value()); }).has_value());
  EXPECT_TRUE(failureOf([&] { static_cast<void>(cell.Left()); }).has_value());
  EXPECT_TRUE(failureOf([&] { host.host().flush(); }).has_value());
}

TEST_F(CalcDocument, ObjectsThatOutliveTheHostRaise) {
  auto other = std::make_unique<CalcUnderTest>(sheets());
  const sheet::Application application(other->application());
  const sheet::Range cell = application.Range("B2");
  other.reset();
  expectRefused([&] { static_cast<void>(cell.Value()); }, "has been closed");
  expectRefused([&] { static_cast<void>(application.ActiveSheet()); }, "has been closed");
}

TEST_F(CalcDocument, TwoDocumentsThatAreOpenAtOnceAreKeptApart) {
  CalcUnderTest other(sheets());
  const sheet::Application second(other.application());
  range("B2").Value(Variant(100.0));
  second.Range("B2").Value(Variant(200.0));
  second.Range("C2").Interior().ColorIndex(3);
  host.host().flush();
  other.host().flush();
  EXPECT_EQ(value("B2"), Variant(100.0));
  EXPECT_EQ(second.Range("B2").Value(), Variant(200.0));
  EXPECT_EQ(host.cells("B2")->getCellByPosition(0, 0)->getValue(), 100.0);
  // A range of one document is none of the other.
  EXPECT_TRUE(failureOf([&] { range("A2:C4").Sort(second.Range("B2:B4"), 1); }).has_value());
}

TEST_F(CalcDocument, ValuesOfEveryKindSurviveBothKindsOfFile) {
  range("A5").Value(Variant(true));
  range("B5").Value(Variant(Date{43832.0}));
  range("C5").Value(Variant("=NA()"));
  range("A6").Value(Variant("12"));
  range("B6").Value(Variant(0.25));
  range("B6").NumberFormat("0.00%");
  for (const char* ending : {".ods", ".xlsx"}) {
    host.reopenAs(ending);
    EXPECT_EQ(value("B5"), Variant(Date{43832.0})) << ending;
    EXPECT_EQ(value("C5"), Variant(ErrorValue{2042})) << ending;
    EXPECT_EQ(value("A6"), Variant("12")) << ending;
    EXPECT_EQ(value("B6"), Variant(0.25)) << ending;
  }
}

}  // namespace
}  // namespace mervane::tests
