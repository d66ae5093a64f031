#include <gtest/gtest.h>

#include "fixture.h"

namespace mervane::workbook::tests {
namespace {

BookText table() {
  BookText text;
  text.sheet =
      "<sheetData><row r=\"2\"><c r=\"B2\"><v>1</v></c><c r=\"C2\"><v>1</v></c></row>"
      "<row r=\"3\"><c r=\"B3\"><v>1</v></c></row><row r=\"4\"><c r=\"D4\"><v>1</v></c></row>"
      "<row r=\"6\"><c r=\"B6\"><v>1</v></c></row></sheetData><pageMargins left=\"0.7\" right=\"0.7\" top=\"0.75\" "
      "bottom=\"0.75\" header=\"0.3\" footer=\"0.3\"/>";
  return text;
}

sheet::Worksheet activeSheet(OpenBook& book) {
  return book.application().ActiveSheet();
}

TEST(AutoFilter, GoesOnOverTheTableAroundTheCell) {
  OpenBook book(table());
  EXPECT_FALSE(activeSheet(book).AutoFilterMode());
  book.range("C2").AutoFilter();
  EXPECT_TRUE(activeSheet(book).AutoFilterMode());
  const auto parts = book.saved();
  EXPECT_NE(parts.at("xl/worksheets/sheet1.xml").find("</sheetData><autoFilter ref=\"B2:D4\"/><pageMargins"),
            std::string::npos);
  EXPECT_NE(parts.at("xl/workbook.xml")
                .find("</sheets><definedNames><definedName name=\"_xlnm._FilterDatabase\" localSheetId=\"0\" "
                      "hidden=\"1\">Data!$B$2:$D$4</definedName></definedNames>"),
            std::string::npos)
      << parts.at("xl/workbook.xml");
}

/// A table, a pivot table or merged cells in A1:B3 with a listing right beside them in C1:C3.
BookText beside(const std::string& elements, const std::string& kind = {}, const std::string& part = {}) {
  BookText text;
  text.sheet = "<sheetData>";
  for (const std::string row : {"1", "2", "3"}) {
    text.sheet += "<row r=\"" + row + "\">";
    for (const std::string column : {"A", "B", "C"}) text.sheet += "<c r=\"" + column + row + "\"><v>1</v></c>";
    text.sheet += "</row>";
  }
  text.sheet += "</sheetData>" + elements;
  const std::string space = "http://schemas.openxmlformats.org/";
  text.rootAttributes = " xmlns:r=\"" + space + "officeDocument/2006/relationships\"";
  if (kind.empty()) return text;
  text.sheetRelations = "<Relationship Id=\"rId7\" Type=\"" + space + "officeDocument/2006/relationships/" + kind +
                        "\" Target=\"../one.xml\"/>";
  text.more = {{"xl/one.xml", part}};
  return text;
}

std::string filterBeside(const BookText& text) {
  OpenBook book(text);
  book.range("C1").AutoFilter();
  const std::string sheet = book.savedSheet();
  const std::size_t at = sheet.find("<autoFilter");
  return at == std::string::npos ? "none" : sheet.substr(at, sheet.find("/>", at) + 2 - at);
}

TEST(AutoFilter, LiesOverTheListingAloneWhereATableAPivotTableOrMergedCellsStandBesideIt) {
  const std::string main = " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
  EXPECT_EQ(filterBeside(beside("")), "<autoFilter ref=\"A1:C3\"/>");
  const std::string alone = "<autoFilter ref=\"C1:C3\"/>";
  EXPECT_EQ(filterBeside(beside("<tableParts count=\"1\"><tablePart r:id=\"rId7\"/></tableParts>", "table",
                                "<table" + main + " id=\"1\" displayName=\"T\" ref=\"A1:B3\"/>")),
            alone);
  EXPECT_EQ(filterBeside(beside(
                "", "pivotTable",
                "<pivotTableDefinition" + main + " name=\"P\"><location ref=\"A1:B3\"/></pivotTableDefinition>")),
            alone);
  EXPECT_EQ(filterBeside(beside("<mergeCells><mergeCell ref=\"A2:B2\"/></mergeCells>")), alone);
}

TEST(AutoFilter, GoesOffAgainAndShowsTheHiddenRows) {
  BookText text = table();
  text.sheet.replace(text.sheet.find("<row r=\"3\">"), 11, "<row r=\"3\" hidden=\"1\" ht=\"20\">");
  text.sheet.insert(0, "<sheetPr filterMode=\"1\"/>");
  text.sheet.insert(text.sheet.find("<pageMargins"),
                    "<autoFilter ref=\"B2:D4\"><filterColumn colId=\"0\"><filters><filter "
                    "val=\"2\"/></filters></filterColumn></autoFilter>");
  text.workbookExtra =
      "<definedNames><definedName name=\"_xlnm._FilterDatabase\" localSheetId=\"0\" hidden=\"1\">Data!$B$2:$D$4"
      "</definedName></definedNames>";
  OpenBook book(text);
  EXPECT_TRUE(activeSheet(book).AutoFilterMode());
  book.range("B2").AutoFilter();
  EXPECT_FALSE(activeSheet(book).AutoFilterMode());
  const auto parts = book.saved();
  const std::string& sheet = parts.at("xl/worksheets/sheet1.xml");
  EXPECT_EQ(sheet.find("autoFilter"), std::string::npos);
  EXPECT_EQ(sheet.find("filterMode"), std::string::npos);
  EXPECT_NE(sheet.find("<row r=\"3\" ht=\"20\">"), std::string::npos);
  EXPECT_EQ(parts.at("xl/workbook.xml").find("definedName"), std::string::npos);
}

TEST(AutoFilter, AnEmptyPlaceIsRefused) {
  OpenBook book(table());
  int number = 0;
  failureOf([&] { book.range("H20").AutoFilter(); }, &number);
  EXPECT_EQ(number, 1004);
  EXPECT_FALSE(activeSheet(book).AutoFilterMode());
}

TEST(AutoFilter, SeveralCellsAreTakenAsTheyAre) {
  OpenBook book(table());
  book.range("B2:C3").AutoFilter();
  EXPECT_NE(book.savedSheet().find("<autoFilter ref=\"B2:C3\"/>"), std::string::npos);
}

TEST(AutoFilter, InsideATableItsOwnArrowsAreSwitched) {
  BookText text = table();
  text.sheet += "<tableParts count=\"1\"><tablePart r:id=\"rId1\"/></tableParts>";
  text.sheetRelations =
      "<Relationship Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/table\" "
      "Target=\"../tables/table1.xml\"/>";
  text.more.emplace_back(
      "xl/tables/table1.xml",
      "<table xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" id=\"1\" name=\"T\" "
      "displayName=\"T\" ref=\"B2:C3\"><tableColumns count=\"2\"><tableColumn id=\"1\" name=\"1\"/>"
      "<tableColumn id=\"2\" name=\"2\"/></tableColumns></table>");
  OpenBook book(text);
  book.range("B2").AutoFilter();
  EXPECT_FALSE(activeSheet(book).AutoFilterMode());
  EXPECT_NE(book.saved().at("xl/tables/table1.xml").find("<autoFilter ref=\"B2:C3\"/><tableColumns"),
            std::string::npos);
}

}  // namespace
}  // namespace mervane::workbook::tests
