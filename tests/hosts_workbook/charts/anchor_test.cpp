#include "hosts/workbook/charts/anchor.h"

#include <gtest/gtest.h>

#include "tests/hosts_workbook/charts/test_book.h"

namespace mervane::tests {
namespace {

using workbook::charts::Anchor;
using workbook::charts::anchorFor;
using workbook::charts::Box;
using workbook::charts::boxOf;
using workbook::charts::movedAnchor;
using workbook::charts::readAnchor;

constexpr Box place{100.0, 37.5, 350.0, 200.0};

void expectSame(const Box& one, const Box& other) {
  EXPECT_NEAR(one.left, other.left, 1e-4);
  EXPECT_NEAR(one.top, other.top, 1e-4);
  EXPECT_NEAR(one.width, other.width, 1e-4);
  EXPECT_NEAR(one.height, other.height, 1e-4);
}

TEST(Anchor, OfEachKindCoversTheBoxThatItWasMadeFor) {
  for (const Anchor::Kind kind : {Anchor::Kind::twoCells, Anchor::Kind::oneCell, Anchor::Kind::absolute}) {
    expectSame(boxOf(anchorFor(kind, place, EvenGeometry()), EvenGeometry()), place);
  }
}

TEST(Anchor, StatesCornersAsCellsAndOffsets) {
  const Anchor anchor = anchorFor(Anchor::Kind::twoCells, place, EvenGeometry());
  EXPECT_EQ(anchor.from.column, 2);
  EXPECT_EQ(anchor.from.columnOffset, 4 * 12700);
  EXPECT_EQ(anchor.from.row, 2);
  EXPECT_EQ(anchor.from.rowOffset, 95250);
  EXPECT_EQ(anchor.to.column, 9);
  EXPECT_EQ(anchor.to.columnOffset, 18 * 12700);
}

TEST(Anchor, IsMovedWithEveryOtherByteKept) {
  const std::string before =
      "<x:twoCellAnchor editAs='oneCell' ><x:from><x:col>1</x:col></x:from>\n <x:to/><x:pic a = \"1\"/>"
      "<x:clientData/></x:twoCellAnchor>";
  const Anchor anchor = anchorFor(Anchor::Kind::twoCells, {0, 0, 48, 15}, EvenGeometry());
  EXPECT_EQ(movedAnchor(before, anchor),
            "<x:twoCellAnchor editAs='oneCell' >"
            "<x:from><x:col>0</x:col><x:colOff>0</x:colOff><x:row>0</x:row><x:rowOff>0</x:rowOff></x:from>\n "
            "<x:to><x:col>1</x:col><x:colOff>0</x:colOff><x:row>1</x:row><x:rowOff>0</x:rowOff></x:to>"
            "<x:pic a = \"1\"/><x:clientData/></x:twoCellAnchor>");
}

TEST(Anchor, OfAbsoluteKindIsMovedByItsPositionAndExtent) {
  const std::string before = "<absoluteAnchor><pos x=\"1\" y=\"2\"/><ext cx=\"3\" cy=\"4\"/><sp/></absoluteAnchor>";
  const Anchor anchor = anchorFor(Anchor::Kind::absolute, {1, 2, 3, 4}, EvenGeometry());
  EXPECT_EQ(movedAnchor(before, anchor),
            "<absoluteAnchor><pos x=\"12700\" y=\"25400\"/><ext cx=\"38100\" cy=\"50800\"/><sp/></absoluteAnchor>");
}

TEST(Anchor, WithAbsurdCellsIsReadAsTheSheetsEdge) {
  pugi::xml_document document;
  document.load_string(
      "<oneCellAnchor><from><col>-5</col><colOff>x</colOff><row>99999999999999999999</row></from>"
      "<ext cx=\"12700\" cy=\"\"/></oneCellAnchor>");
  const Anchor anchor = readAnchor(document.document_element());
  EXPECT_EQ(anchor.kind, Anchor::Kind::oneCell);
  EXPECT_EQ(anchor.from.column, 0);
  EXPECT_EQ(anchor.from.columnOffset, 0);
  EXPECT_LT(anchor.from.row, workbook::lastSheetRow);
  EXPECT_EQ(anchor.width, 12700);
  EXPECT_EQ(anchor.height, 0);
}

}  // namespace
}  // namespace mervane::tests
