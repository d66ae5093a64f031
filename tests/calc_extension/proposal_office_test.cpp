#include "calc/proposal.h"

#include <gtest/gtest.h>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

#include "guard/facts.h"
#include "hosts/calc/calc_host.h"
#include "tests/calc_extension/hidden_sheet.h"

namespace mervane::addin {
namespace {

class Proposals : public HiddenSheet {
 protected:
  std::optional<Proposal> propose() {
    const calc::CalcHost host(tests::testedOffice().office.context, document);
    const auto facts = host.facts();
    return proposeFromSelection(document, *facts);
  }
  void put(sal_Int32 column, sal_Int32 row, const uno::Any& value) {
    const uno::Reference<star::sheet::XCellRangeData> cell(sheet->getCellRangeByPosition(column, row, column, row),
                                                           uno::UNO_QUERY_THROW);
    const uno::Sequence<uno::Any> only(&value, 1);
    cell->setDataArray(uno::Sequence<uno::Sequence<uno::Any>>(&only, 1));
  }
  /// Has a column's cells show dates.
  void showDates(sal_Int32 column) {
    const uno::Reference<star::util::XNumberFormatsSupplier> supplier(document, uno::UNO_QUERY_THROW);
    const uno::Reference<star::util::XNumberFormatTypes> formats(supplier->getNumberFormats(), uno::UNO_QUERY_THROW);
    const uno::Reference<star::beans::XPropertySet> cells(sheet->getCellRangeByPosition(column, 2, column, 4),
                                                          uno::UNO_QUERY_THROW);
    set(cells, "NumberFormat", uno::Any(formats->getStandardFormat(star::util::NumberFormat::DATE, {})));
  }
};

TEST_F(Proposals, OneSelectedCellProposesTheNumbersAroundIt) {
  rename("Data");
  select(3, 3, 3, 3);
  const auto proposal = propose();
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->inputs, "Data!C3:E5");
  EXPECT_EQ(proposal->outputs, "Data!H3");
}

TEST_F(Proposals, ASelectedRangeIsTakenWithoutItsHeadingAndItsTexts) {
  rename("Data");
  select(1, 1, 4, 4);
  const auto proposal = propose();
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->inputs, "Data!C3:E5");
  select(2, 2, 3, 3);
  EXPECT_EQ(propose()->inputs, "Data!C3:D4");
}

TEST_F(Proposals, WholeColumnsEndWithTheUsedCells) {
  rename("Data");
  select(2, 2, 3, 1048575);
  const auto proposal = propose();
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->inputs, "Data!C3:D5");
}

TEST_F(Proposals, ResultsOfAnEarlierRunAreNotProposedAndTheNextRunWritesOverThem) {
  rename("Data");
  // Without the notes in F, as the labels of the blocks stand there.
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
    const auto proposal = propose();
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
  const auto proposal = propose();
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->inputs, "Data!C3:E5");
  EXPECT_EQ(proposal->outputs, "Data!G3");
  select(1, 1, 1, 1);
  EXPECT_EQ(propose()->inputs, "Data!C3:E5");
}

TEST_F(Proposals, OutputsStandBesideASecondBlock) {
  rename("Data");
  for (sal_Int32 column = 7; column <= 9; ++column) put(column, 3, uno::Any(1.5));
  select(3, 3, 3, 3);
  const auto proposal = propose();
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->inputs, "Data!C3:E5");
  EXPECT_EQ(proposal->outputs, "Data!L3");
}

TEST_F(Proposals, OutputsFollowTheLabelsAtOnceWhereNothingStandsBeyondThem) {
  rename("Data");
  for (sal_Int32 row = 1; row <= 4; ++row) put(5, row, uno::Any(rtl::OUString()));
  select(3, 3, 3, 3);
  const auto proposal = propose();
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->outputs, "Data!G3");
}

TEST_F(Proposals, ASelectionWithoutNumbersProposesNothing) {
  select(1, 1, 1, 4);
  EXPECT_FALSE(propose());
  select(20, 20, 20, 20);
  EXPECT_FALSE(propose());
}

TEST_F(Proposals, LeaveOutDates) {
  rename("Data");
  showDates(2);
  select(3, 3, 3, 3);
  EXPECT_EQ(propose()->inputs, "Data!D3:E5");
  select(1, 1, 4, 4);
  EXPECT_EQ(propose()->inputs, "Data!D3:E5");
}

TEST_F(Proposals, LeaveOutColumnsThatCountTheRows) {
  rename("Data");
  for (sal_Int32 row = 2; row <= 4; ++row) put(2, row, uno::Any(static_cast<double>(row + 99)));
  select(3, 3, 3, 3);
  EXPECT_EQ(propose()->inputs, "Data!D3:E5");
}

TEST_F(Proposals, LeaveOutTwoHeadingRows) {
  rename("Data");
  for (sal_Int32 column = 2; column <= 4; ++column) put(column, 2, uno::Any(rtl::OUString("cm")));
  select(3, 3, 3, 3);
  EXPECT_EQ(propose()->inputs, "Data!C4:E5");
  // A number among the headings of the second row draws no heading into the numbers.
  put(4, 2, uno::Any(2020.5));
  EXPECT_EQ(propose()->inputs, "Data!C4:E5");
}

}  // namespace
}  // namespace mervane::addin
