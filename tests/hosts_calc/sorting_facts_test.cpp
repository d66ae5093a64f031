#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/sheet/XNamedRanges.hpp>

#include "guard/facts.h"
#include "hosts/calc/office_call.h"
#include "tests/hosts_calc/calc_under_test.h"

namespace mervane::tests {
namespace {

namespace css = com::sun::star;
namespace uno = com::sun::star::uno;

/// Numbers in B2:C4 of "Sheet1", of which the rows are sorted with D as the borrowed column, and a sheet "My data".
class CalcSortingFacts : public testing::Test {
 protected:
  void setFormula(std::int32_t sheet, const std::string& area, const std::string& formula) {
    host.sheet(sheet)
        ->getCellRangeByName(calc::toOffice(area))
        ->getCellByPosition(0, 0)
        ->setFormula(calc::toOffice(formula));
    host.host().flush();
  }
  guard::SortingFacts facts() { return host.host().facts()->sortingFacts("Sheet1", {2, 1, 4, 4}); }

  CalcUnderTest host{
      {{"Sheet1", {{"Name", "x", "y"}, {"c", 3.0, 30.0}, {"a", 1.0, 10.0}, {"b", 2.0, 20.0}}}, {"My data", {{"k"}}}}};
};

TEST_F(CalcSortingFacts, TellFormulasOnTheRowsThatNameOtherRows) {
  setFormula(0, "A3", "=B3/SUM(B$2:B$4)+$'My data'.A9");
  EXPECT_EQ(facts().moved.count, 0);
  setFormula(0, "A4", "=B4-B3");
  const guard::SortingFacts found = facts();
  ASSERT_EQ(found.moved.count, 1);
  EXPECT_EQ(found.moved.first[0].place, "Sheet1!A4");
  EXPECT_EQ(found.moved.first[0].text, "=B4-B3");
  EXPECT_EQ(found.outside.count, 0);
}

TEST_F(CalcSortingFacts, TellFormulasAndNamesThatLookAtSomeOfTheRowsFromOutside) {
  setFormula(1, "A2", "=SUM($Sheet1.B2:B4)");
  setFormula(0, "A9", "=SUM(B1:B9)");
  EXPECT_EQ(facts().outside.count, 0);
  setFormula(1, "A3", "=$Sheet1.B3");
  const uno::Reference<css::sheet::XArrayFormulaRange> array(host.sheet(1)->getCellRangeByName("C1:C2"),
                                                             uno::UNO_QUERY_THROW);
  array->setArrayFormula("=$Sheet1.B3:B4*2");
  const uno::Reference<css::beans::XPropertySet> document(host.document(), uno::UNO_QUERY_THROW);
  const uno::Reference<css::sheet::XNamedRanges> names(document->getPropertyValue("NamedRanges"), uno::UNO_QUERY_THROW);
  names->addNewByName("Best", "$Sheet1.$B$3", css::table::CellAddress(), 0);
  host.host().flush();
  const guard::SortingFacts found = facts();
  EXPECT_EQ(found.moved.count, 0);
  ASSERT_EQ(found.outside.count, 4) << "one cell, two of the array and the name";
  EXPECT_EQ(found.outside.first[0].place, "'My data'!A3");
  EXPECT_EQ(found.outside.first[0].text, "=Sheet1!B3");
}

}  // namespace
}  // namespace mervane::tests
