#include "tests/hosts_workbook/part_order/part_order.h"

#include <gtest/gtest.h>

namespace mervane::workbook::tests {
namespace {

using Faults = std::vector<std::string>;

Faults sheetFaults(const std::string& inside) {
  return faultsOfPart("sheet", "<worksheet>" + inside + "</worksheet>");
}

TEST(PartOrder, ASoundPartHasNoFaults) {
  EXPECT_EQ(sheetFaults("<sheetPr/><cols><col/><col/></cols><sheetData><row r=\"1\"><c r=\"A1\"><f>1</f><v>1</v></c>"
                        "<c r=\"C1\"/></row><row r=\"3\"/></sheetData><autoFilter/><drawing/>"),
            Faults());
  EXPECT_EQ(faultsOfPart("any", "<x:worksheet xmlns:x=\"urn:x\"><x:sheetPr/><x:sheetData/></x:worksheet>"), Faults());
}

TEST(PartOrder, AnElementInFrontOfOneThatItFollowsIsFound) {
  EXPECT_EQ(sheetFaults("<drawing/><autoFilter/>"), Faults{"sheet: /worksheet/autoFilter comes too late"});
  EXPECT_EQ(sheetFaults("<sheetData><row r=\"1\"><c r=\"A1\"><v/><f/></c></row></sheetData>").size(), 1U);
}

TEST(PartOrder, AnElementThatIsThereTwiceIsFound) {
  EXPECT_EQ(sheetFaults("<sheetData/><sheetData/>"), Faults{"sheet: /worksheet/sheetData is there twice"});
  EXPECT_EQ(sheetFaults("<conditionalFormatting/><conditionalFormatting/>"), Faults());
}

TEST(PartOrder, AnElementWithoutAPlaceIsFound) {
  EXPECT_EQ(sheetFaults("<sheetdata/>"), Faults{"sheet: /worksheet/sheetdata has no place in its parent"});
}

TEST(PartOrder, RowsAndCellsThatDoNotAscendAreFound) {
  EXPECT_EQ(sheetFaults("<sheetData><row r=\"2\"/><row r=\"2\"/></sheetData>").size(), 1U);
  EXPECT_EQ(sheetFaults("<sheetData><row r=\"2\"><c r=\"B2\"/><c r=\"A2\"/></row></sheetData>").size(), 1U);
  EXPECT_EQ(sheetFaults("<sheetData><row r=\"2\"><c r=\"B3\"/></row></sheetData>").size(), 1U);
}

TEST(PartOrder, ExtensionsAndAlternateContentsAreLetBe) {
  EXPECT_EQ(
      sheetFaults("<sheetData/><mc:AlternateContent xmlns:mc=\"urn:mc\"><sheetPr/></mc:AlternateContent><drawing/>"
                  "<extLst><ext><sheetPr/></ext></extLst>"),
      Faults());
}

TEST(PartOrder, StylesThatReferToNothingOrCountWronglyAreFound) {
  const auto faults = [](const std::string& inside) {
    return faultsOfPart("styles", "<styleSheet>" + inside + "</styleSheet>").size();
  };
  EXPECT_EQ(
      faults("<fonts count=\"1\"><font><name/><b/></font></fonts><cellXfs count=\"1\"><xf fontId=\"0\"/></cellXfs>"),
      0U);
  EXPECT_EQ(faults("<fonts count=\"2\"><font/></fonts>"), 1U);
  EXPECT_EQ(faults("<fonts><font/></fonts><cellXfs><xf fontId=\"1\"/></cellXfs>"), 1U);
  EXPECT_EQ(faults("<cellXfs/><fonts/>"), 1U);
}

TEST(PartOrder, ChartsAndDrawingsHaveOrdersOfTheirOwn) {
  const auto plot = [](const std::string& inside) {
    return faultsOfPart("chart", "<c:chartSpace xmlns:c=\"urn:c\"><c:chart><c:plotArea>" + inside +
                                     "</c:plotArea></c:chart></c:chartSpace>")
        .size();
  };
  EXPECT_EQ(plot("<c:layout/><c:lineChart><c:ser><c:idx/><c:order/><c:marker/><c:smooth/></c:ser><c:marker/>"
                 "<c:axId/><c:axId/></c:lineChart><c:valAx/><c:catAx/>"),
            0U);
  EXPECT_EQ(plot("<c:lineChart><c:ser><c:order/><c:idx/></c:ser></c:lineChart>"), 1U);
  EXPECT_EQ(plot("<c:barChart><c:ser><c:smooth/></c:ser></c:barChart>"), 1U) << "a column is not smooth";
  EXPECT_EQ(plot("<c:valAx><c:crosses/><c:crossesAt/></c:valAx>"), 1U) << "one of two";
  EXPECT_EQ(faultsOfPart("drawing",
                         "<xdr:wsDr xmlns:xdr=\"urn:x\"><xdr:twoCellAnchor><xdr:to/><xdr:from/>"
                         "</xdr:twoCellAnchor><xdr:oneCellAnchor><xdr:from><xdr:col/><xdr:row/>"
                         "</xdr:from><xdr:ext/></xdr:oneCellAnchor></xdr:wsDr>")
                .size(),
            1U);
}

TEST(PartOrder, APartThatIsNoXmlIsAFault) {
  EXPECT_EQ(faultsOfPart("x", "<worksheet>").size(), 1U);
}

TEST(PartOrder, PartsOfOtherKindsAreLetBe) {
  EXPECT_EQ(faultsOfPart("x", "<theme><b/><a/></theme>"), Faults());
}

}  // namespace
}  // namespace mervane::workbook::tests
