#include <gtest/gtest.h>

#include "fixture.h"
#include "mervane/runtime_errors.h"

namespace mervane::workbook::tests {
namespace {

BookText table() {
  BookText text;
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\" t=\"str\"><v>name</v></c><c r=\"B1\"><v>1</v></c></row>"
      "<row r=\"2\"><c r=\"A2\"><v>2</v></c><c r=\"B2\"><v>3</v></c></row>"
      "<row r=\"3\"><c r=\"A3\"><v>4</v></c><c r=\"B3\"><v>5</v></c></row></sheetData>";
  return text;
}

/// Two sheets whose names are in other scripts.
BookText manySheets() {
  BookText text = table();
  text.workbookExtra = "";
  text.more.emplace_back("xl/worksheets/sheet2.xml",
                         "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><sheetData>"
                         "<row r=\"1\"><c r=\"A1\"><v>42</v></c></row></sheetData></worksheet>");
  text.workbookRelations =
      "<Relationship Id=\"rId9\" "
      "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\" "
      "Target=\"/xl/worksheets/sheet2.xml\"/>";
  text.workbookProperties = "";
  Parts parts = text.parts();
  for (auto& [name, content] : parts) {
    if (name != "xl/workbook.xml") continue;
    const std::size_t at = content.find("</sheets>");
    content.insert(at, "<sheet name=\"Данные и't\" sheetId=\"2\" r:id=\"rId9\"/>");
  }
  BookText result;
  result.more = parts;
  return result;
}

TEST(RangeObject, IndexesCountFromTheRangeAndMayLieOutsideOfIt) {
  OpenBook book(table());
  const sheet::Range range = book.range("B2:B3");
  EXPECT_EQ(range.Item(1, 1).Value(), Variant(3.0));
  EXPECT_EQ(range.Item(0, 0).Value(), Variant("name"));
  EXPECT_EQ(range.Cells(3, 1).Value(), Variant());
  EXPECT_EQ(range.Item(2, 0).Value(), Variant(4.0));
}

TEST(RangeObject, IndexesOffTheSheetRaiseTheApplicationsFailure) {
  OpenBook book(table());
  int number = 0;
  failureOf([&] { static_cast<void>(book.range("A1").Item(0, 1)); }, &number);
  EXPECT_EQ(number, runtime::applicationDefined.number);
  failureOf([&] { static_cast<void>(book.range("A1").Item(1, 0)); }, &number);
  EXPECT_EQ(number, runtime::applicationDefined.number);
  failureOf([&] { static_cast<void>(book.range("XFD1048576").Item(2, 1)); }, &number);
  failureOf([&] { static_cast<void>(book.range("XFD1048576").Item(1, 2)); }, &number);
}

TEST(RangeObject, OffsetOffTheSheetRaisesTheApplicationsFailure) {
  OpenBook book(table());
  int number = 0;
  failureOf([&] { static_cast<void>(book.range("B1").Offset(-1, 0)); }, &number);
  EXPECT_EQ(number, 1004);
  failureOf([&] { static_cast<void>(book.range("A1:B2").Offset(0, -1)); }, &number);
  EXPECT_EQ(number, 1004);
  failureOf([&] { static_cast<void>(book.range("A1").Resize(0, 1)); }, &number);
  EXPECT_EQ(number, 1004);
  EXPECT_EQ(book.range("A1:B2").Offset(1, 0).Item(1, 1).Value(), Variant(2.0));
}

TEST(RangeObject, CountsRowsAndColumns) {
  OpenBook book(table());
  EXPECT_EQ(book.range("B2:D6").Rows().Count(), 5);
  EXPECT_EQ(book.range("B2:D6").Columns().Count(), 3);
  EXPECT_EQ(book.range("B2:D6").Column(), 2);
  EXPECT_EQ(book.range("B2:D6").Columns(3).Column(), 4);
  EXPECT_EQ(book.range("A1").Resize(2, 2).Columns().Count(), 2);
}

TEST(RangeObject, CellsAreEnumeratedRowByRow) {
  OpenBook book(table());
  std::vector<double> values;
  sheet::forEach<sheet::Range>(book.range("A2:B3").Cells(),
                               [&](const sheet::Range& cell) { values.push_back(*cell.Value().getIf<double>()); });
  EXPECT_EQ(values, (std::vector<double>{2, 3, 4, 5}));
}

TEST(RangeObject, ColumnsAreEnumeratedAsRanges) {
  OpenBook book(table());
  std::vector<double> values;
  sheet::forEach<sheet::Range>(book.range("A2:B3").Columns(), [&](const sheet::Range& column) {
    EXPECT_EQ(column.Rows().Count(), 2);
    sheet::forEach<sheet::Range>(column.Cells(),
                                 [&](const sheet::Range& cell) { values.push_back(*cell.Value().getIf<double>()); });
  });
  EXPECT_EQ(values, (std::vector<double>{2, 4, 3, 5}));
}

TEST(RangeObject, ValueOfSeveralCellsIsATable) {
  OpenBook book(table());
  const Variant value = book.range("A2:B3").Value();
  EXPECT_EQ(value.array().lowerBound(1), 1);
  EXPECT_EQ(value.array().upperBound(2), 2);
  EXPECT_EQ(value.array().at(2, 1), Variant(4.0));
}

TEST(RangeObject, PlacesAreInPointsOfTheRealColumnsAndRows) {
  BookText text;
  text.sheet =
      "<sheetFormatPr defaultRowHeight=\"15\"/><cols><col min=\"2\" max=\"2\" width=\"20.7109375\" customWidth=\"1\"/>"
      "<col min=\"3\" max=\"3\" width=\"9\" hidden=\"1\"/></cols>"
      "<sheetData><row r=\"2\" ht=\"30\" customHeight=\"1\"/><row r=\"4\" hidden=\"1\"/></sheetData>";
  OpenBook book(text);
  EXPECT_DOUBLE_EQ(book.range("A1").Width(), 48.0);
  EXPECT_DOUBLE_EQ(book.range("B1").Left(), 48.0);
  EXPECT_DOUBLE_EQ(book.range("B1").Width(), 145 * 0.75);
  EXPECT_DOUBLE_EQ(book.range("C1").Width(), 0.0);
  EXPECT_DOUBLE_EQ(book.range("D1").Left(), 48.0 + 145 * 0.75);
  EXPECT_DOUBLE_EQ(book.range("A3").Top(), 45.0);
  EXPECT_DOUBLE_EQ(book.range("A5").Top(), 60.0);
  EXPECT_DOUBLE_EQ(book.range("A1048576").Top(), 15.0 * 1048575);
}

TEST(ApplicationObject, RangeTakesSheetNamesInAnyScriptAndCase) {
  OpenBook book(manySheets().more);
  EXPECT_EQ(book.value("'Данные и''t'!A1"), Variant(42.0));
  EXPECT_EQ(book.value("'ДАННЫЕ И''T'!$A$1"), Variant(42.0));
  EXPECT_EQ(book.value("A2"), Variant(2.0));
  EXPECT_EQ(book.value("data!A2"), Variant(2.0));
}

TEST(ApplicationObject, RangeRefusesWhatNamesNoCells) {
  OpenBook book(table());
  EXPECT_EQ(failureOf([&] { static_cast<void>(book.range("Nowhere!A1")); }),
            "\"Nowhere!A1\" names no cells of this workbook.");
  for (const char* text : {"", "A", "1", "A0", "XFE1", "A1048577", "A1:B", "Data!", "!A1"}) {
    failureOf([&] { static_cast<void>(book.range(text)); });
  }
}

TEST(ApplicationObject, RangeTakesDefinedNames) {
  BookText text = table();
  text.workbookExtra =
      "<definedNames><definedName name=\"Block\">Data!$A$2:$B$3</definedName>"
      "<definedName name=\"Twice\">Data!$A$2*2</definedName></definedNames>";
  OpenBook book(text);
  EXPECT_EQ(book.range("block").Rows().Count(), 2);
  failureOf([&] { static_cast<void>(book.range("Twice")); });
}

TEST(WorkbookObject, WorksheetsAreFoundByPositionAndByName) {
  OpenBook book(manySheets().more);
  const sheet::Worksheets sheets = book.application().ActiveWorkbook().Worksheets();
  EXPECT_EQ(sheets.Count(), 2);
  EXPECT_EQ(sheets.Item(1).Name(), "Data");
  EXPECT_EQ(sheets.Item("данные И't").Name(), "Данные и't");
  int number = 0;
  failureOf([&] { static_cast<void>(sheets.Item("none")); }, &number);
  EXPECT_EQ(number, runtime::subscriptOutOfRange.number);
  failureOf([&] { static_cast<void>(sheets.Item(3)); }, &number);
  EXPECT_EQ(number, runtime::subscriptOutOfRange.number);
  EXPECT_EQ(book.application().ActiveWorkbook().ActiveSheet().Name(), "Data");
}

TEST(WorksheetObject, RangeOfAnotherSheetIsRefused) {
  OpenBook book(manySheets().more);
  const sheet::Worksheet data = book.application().ActiveWorkbook().Worksheets().Item(1);
  EXPECT_EQ(data.Range("Data!A2").Value(), Variant(2.0));
  failureOf([&] { static_cast<void>(data.Range("'Данные и''t'!A1")); });
}

TEST(ApplicationObject, SelectPutsTheSelectionOnTheSheet) {
  BookText text = table();
  text.sheet =
      "<sheetViews><sheetView tabSelected=\"1\" workbookViewId=\"0\"><pane ySplit=\"1\" topLeftCell=\"A2\" "
      "activePane=\"bottomLeft\" state=\"frozen\"/><selection pane=\"bottomLeft\" activeCell=\"A1\" sqref=\"A1\"/>"
      "</sheetView></sheetViews>" +
      text.sheet;
  OpenBook book(text);
  book.range("G2:H3").Select();
  EXPECT_NE(book.savedSheet().find("<selection pane=\"bottomLeft\" activeCell=\"G2\" sqref=\"G2:H3\"/>"),
            std::string::npos);
}

TEST(ApplicationObject, SelectOnAnotherSheetIsRefused) {
  OpenBook book(manySheets().more);
  int number = 0;
  failureOf([&] { book.range("'Данные и''t'!A1").Select(); }, &number);
  EXPECT_EQ(number, 1004);
}

TEST(ApplicationObject, ReferenceStyleFollowsTheFileAndConvertFormulaServesIt) {
  BookText text = table();
  text.workbookExtra = "<calcPr calcId=\"0\" refMode=\"R1C1\"/>";
  OpenBook book(text);
  const sheet::Application application = book.application();
  EXPECT_EQ(application.ReferenceStyle(), -4150);
  const auto converted = [&](const char* formula) { return application.ConvertFormula(formula, -4150, 1); };
  EXPECT_EQ(converted("Data!R2C1:R3C2"), Variant("Data!$A$2:$B$3"));
  EXPECT_EQ(converted("R[1]C:R[2]C[1]"), Variant("A2:B3"));
  EXPECT_EQ(converted("'R1C1 x'!RC"), Variant("'R1C1 x'!A1"));
  EXPECT_EQ(converted("Data!A2:B3"), Variant("Data!A2:B3"));
  EXPECT_EQ(converted("R[-1]C"), Variant(ErrorValue{2015}));
  EXPECT_EQ(application.ConvertFormula("=SUM($A$2:B3,\"A1\")", 1, -4150), Variant("=SUM(R2C1:R[2]C[1],\"A1\")"));
}

TEST(ApplicationObject, VersionIsAModernOneAndUpdatingIsRemembered) {
  OpenBook book(table());
  EXPECT_EQ(book.application().Version(), "16.0");
  book.application().ScreenUpdating(false);
  EXPECT_FALSE(book.application().ActiveChart());
}

TEST(ApplicationObject, UnknownMembersAreRefused) {
  OpenBook book(table());
  int number = 0;
  failureOf(
      [&] { static_cast<void>(book.host().application()->invoke(sheet::Access::get, sheet::member::Legend, {})); },
      &number);
  EXPECT_EQ(number, runtime::memberNotSupported.number);
  failureOf([&] { static_cast<void>(book.range("A1").object()->invoke(sheet::Access::put, sheet::member::Left, {})); },
            &number);
}

TEST(WorkbookHost, ListsSheetsWithTheirUsedAreaAndHeaders) {
  OpenBook book(manySheets().more);
  const auto sheets = book.host().sheets();
  ASSERT_EQ(sheets.size(), 2U);
  EXPECT_TRUE(sheets[0].isActive);
  EXPECT_EQ(sheets[0].used, (CellArea{1, 1, 3, 2}));
  EXPECT_EQ(sheets[0].headers, (std::vector<std::string>{"name", "1"}));
  EXPECT_EQ(sheets[1].name, "Данные и't");
}

TEST(WorkbookHost, ProposesTheOneNumericBlock) {
  OpenBook book(table());
  EXPECT_EQ(book.host().numericBlock("Data"), (CellArea{2, 1, 3, 2}));
}

TEST(WorkbookHost, ListsWhatWasWrittenAndWhatItReplaced) {
  OpenBook book(table());
  book.range("D1").Value(Variant("head"));
  book.range("D2").Value(Variant(1.0));
  book.range("E1").Value(Variant("head"));
  book.range("E2").Value(Variant(2.0));
  book.range("A3").Value(Variant("new"));
  book.range("B3").Value(Variant(9.0));
  book.range("B3").Value(Variant(5.0));
  const auto blocks = book.host().written();
  ASSERT_EQ(blocks.size(), 2U);
  EXPECT_EQ(blocks[0].area, (CellArea{3, 1, 3, 1}));
  ASSERT_EQ(blocks[0].overwritten.size(), 1U);
  EXPECT_EQ(blocks[0].overwritten[0].text, "4");
  EXPECT_EQ(blocks[1].area, (CellArea{1, 4, 2, 5}));
  EXPECT_EQ(blocks[1].overwrittenCount, 0);
}

}  // namespace
}  // namespace mervane::workbook::tests
