#include <gtest/gtest.h>

#include "fixture.h"

namespace mervane::workbook::tests {
namespace {

const std::string space = "http://schemas.openxmlformats.org/";

std::string relation(const std::string& id, const std::string& kind, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + space + "officeDocument/2006/relationships/" + kind +
         "\" Target=\"" + target + "\"/>";
}

BookText cells() {
  BookText text;
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"B1\" t=\"inlineStr\"><is><t>x</t></is></c></row>"
      "<row r=\"2\"><c r=\"A2\"><f>1+1</f></c><c r=\"B2\"><f>B3</f><v>7</v></c><c r=\"C2\" "
      "t=\"inlineStr\"><is><t>=y</t>"
      "</is></c></row><row r=\"3\"><c r=\"B3\"><v>7</v></c><c r=\"C3\" s=\"0\"/></row></sheetData>";
  return text;
}

TEST(BookFacts, TellWhatCellsHold) {
  OpenBook book(cells());
  const guard::AreaFacts all = book.host().areaFacts("Data", {1, 1, 9, 9});
  EXPECT_EQ(all.filledCount, 5);
  ASSERT_EQ(all.filled.size(), 5U);
  EXPECT_EQ(all.filled[0].at, (CellAddress{1, 2}));
  EXPECT_EQ(all.filled[1].text, "=1+1");
  EXPECT_EQ(all.filled[2].text, "7");
  EXPECT_EQ(all.formula, (CellAddress{2, 1}));
  EXPECT_EQ(all.unknownFormula, (CellAddress{2, 1}));
  EXPECT_EQ(all.equalsText, (CellAddress{2, 3}));
  EXPECT_FALSE(all.locked);
  const guard::AreaFacts column = book.host().areaFacts("Data", {1, 2, 9, 2});
  EXPECT_EQ(column.filledCount, 3);
  EXPECT_EQ(column.formula, (CellAddress{2, 2}));
  EXPECT_FALSE(column.unknownFormula);
  EXPECT_FALSE(column.equalsText);
}

TEST(BookFacts, TellTheFirstOfManyCellsByRow) {
  BookText text;
  text.sheet = "<sheetData>";
  for (int row = 1; row <= 30; ++row) {
    const std::string number = std::to_string(row);
    text.sheet +=
        "<row r=\"" + number + "\"><c r=\"A" + number + "\"><v>1</v></c><c r=\"B" + number + "\"><v>2</v></c></row>";
  }
  text.sheet += "</sheetData>";
  OpenBook book(text);
  const guard::AreaFacts facts = book.host().areaFacts("Data", {1, 1, 30, 2});
  EXPECT_EQ(facts.filledCount, 60);
  ASSERT_EQ(facts.filled.size(), guard::AreaFacts::mostFilled);
  EXPECT_EQ(facts.filled.back().at, (CellAddress{10, 2}));
}

TEST(BookFacts, TellMergedCellsAndArrayFormulasThatMeetTheArea) {
  BookText text;
  text.sheet =
      "<sheetData><row r=\"5\"><c r=\"A5\"><f t=\"array\" ref=\"A5:B6\">{1}</f><v>1</v></c></row></sheetData>"
      "<mergeCells><mergeCell ref=\"D1:E2\"/></mergeCells>";
  OpenBook book(text);
  EXPECT_EQ(book.host().areaFacts("Data", {2, 5, 2, 5}).merged, (std::vector<CellArea>{{1, 4, 2, 5}}));
  EXPECT_TRUE(book.host().areaFacts("Data", {3, 5, 3, 5}).merged.empty());
  EXPECT_EQ(book.host().areaFacts("Data", {6, 2, 9, 9}).arrays, (std::vector<CellArea>{{5, 1, 6, 2}}));
  EXPECT_TRUE(book.host().areaFacts("Data", {7, 2, 9, 9}).arrays.empty());
}

TEST(BookFacts, TellWhatAProtectedSheetAllows) {
  BookText text = cells();
  text.sheet += "<sheetProtection sheet=\"1\" sort=\"0\" formatCells=\"0\" objects=\"1\"/>";
  OpenBook book(text);
  const guard::Protection allowed = book.host().sheetFacts("Data").protection;
  EXPECT_TRUE(allowed.allowsSorting && allowed.allowsFormats);
  EXPECT_FALSE(allowed.allowsColumnWidths || allowed.allowsFilters || allowed.allowsCharts);
  EXPECT_EQ(book.host().areaFacts("Data", {4, 3, 9, 9}).locked, (CellAddress{4, 3}));
}

TEST(BookFacts, TellThatASheetWithoutProtectionAllowsEverything) {
  OpenBook book(cells());
  const guard::Protection allowed = book.host().sheetFacts("Data").protection;
  EXPECT_TRUE(allowed.allowsSorting && allowed.allowsFormats && allowed.allowsColumnWidths && allowed.allowsFilters &&
              allowed.allowsCharts);
}

TEST(BookFacts, TellTablesPivotTablesAndTheFilter) {
  BookText text = cells();
  text.sheet +=
      "<autoFilter ref=\"A1:C3\"><filterColumn colId=\"0\"/></autoFilter>"
      "<tableParts count=\"1\"><tablePart r:id=\"rId7\"/></tableParts>";
  text.rootAttributes = " xmlns:r=\"" + space + "officeDocument/2006/relationships\"";
  text.sheetRelations =
      relation("rId7", "table", "../tables/table1.xml") + relation("rId8", "pivotTable", "../pivot1.xml");
  const std::string main = " xmlns=\"" + space + "spreadsheetml/2006/main\"";
  text.more = {{"xl/tables/table1.xml", "<table" + main +
                                            " id=\"1\" displayName=\"Sales\" ref=\"F1:G9\" totalsRowCount=\"1\">"
                                            "<autoFilter ref=\"F1:G8\"/></table>"},
               {"xl/pivot1.xml", "<pivotTableDefinition" + main +
                                     " name=\"Sums\"><location ref=\"J5:K9\" rowPageCount=\"2\"/>"
                                     "</pivotTableDefinition>"}};
  OpenBook book(text);
  const guard::SheetFacts facts = book.host().sheetFacts("Data");
  ASSERT_EQ(facts.tables.size(), 1U);
  EXPECT_EQ(facts.tables[0].name, "Sales");
  EXPECT_EQ(facts.tables[0].area, (CellArea{1, 6, 9, 7}));
  EXPECT_TRUE(facts.tables[0].hasTotals && facts.tables[0].hasArrows && facts.tables[0].hasHeader);
  ASSERT_EQ(facts.pivotTables.size(), 1U);
  EXPECT_EQ(facts.pivotTables[0].name, "Sums");
  EXPECT_EQ(facts.pivotTables[0].area, (CellArea{2, 10, 9, 11}));
  ASSERT_TRUE(facts.filter);
  EXPECT_EQ(facts.filter->area, (CellArea{1, 1, 3, 3}));
  EXPECT_TRUE(facts.filter->hasCriteria);
  EXPECT_EQ(facts.used, (CellArea{1, 1, 3, 3}));

  OpenBook plain(cells());
  const guard::SheetFacts none = plain.host().sheetFacts("Data");
  EXPECT_TRUE(none.tables.empty() && none.pivotTables.empty() && none.drawings.empty() && !none.filter);
}

TEST(BookFacts, TellChartsWithTheirTitlesAndTheCellsThatTheyCover) {
  OpenBook book(cells());
  const sheet::Application application = book.application();
  for (const char* title : {"", "Sales"}) {
    application.Charts().Add();
    application.ActiveChart().Location(2, "Data");
    application.ActiveChart().HasTitle(*title != '\0');
    if (*title != '\0') application.ActiveChart().ChartTitle().Text(title);
  }
  const std::vector<guard::Drawing> drawings = book.host().sheetFacts("Data").drawings;
  ASSERT_EQ(drawings.size(), 2U);
  EXPECT_TRUE(drawings[0].isChart);
  EXPECT_FALSE(drawings[0].title);
  EXPECT_EQ(drawings[1].title, "Sales");
  // 360 by 216 points are seven and a half columns of 48 points and more than fourteen rows of 15.
  EXPECT_GE(drawings[0].covers.columns(), 7);
  EXPECT_GE(drawings[0].covers.rows(), 14);
}

TEST(BookFacts, AnUnknownSheetRaises) {
  OpenBook book(cells());
  EXPECT_FALSE(failureOf([&] { static_cast<void>(book.host().sheetFacts("None")); }).empty());
  EXPECT_FALSE(failureOf([&] { book.host().activate("None"); }).empty());
}

}  // namespace
}  // namespace mervane::workbook::tests
