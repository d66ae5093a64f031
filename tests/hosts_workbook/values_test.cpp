#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "fixture.h"

namespace mervane::workbook::tests {
namespace {

constexpr const char* dateStyles =
    "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
    "<numFmts count=\"4\"><numFmt numFmtId=\"164\" formatCode=\"yyyy\\-mm\\-dd\"/>"
    "<numFmt numFmtId=\"165\" formatCode=\"0.0&quot;days&quot;\"/><numFmt numFmtId=\"166\" formatCode=\"[h]:mm\"/>"
    "<numFmt numFmtId=\"167\" formatCode=\"[Red]0.00;[Blue]-0.00\"/></numFmts>"
    "<fonts count=\"1\"><font><sz val=\"11\"/><name val=\"Calibri\"/></font></fonts>"
    "<fills count=\"1\"><fill><patternFill patternType=\"none\"/></fill></fills><borders "
    "count=\"1\"><border/></borders>"
    "<cellXfs count=\"7\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/><xf numFmtId=\"14\"/>"
    "<xf numFmtId=\"164\"/><xf numFmtId=\"165\"/><xf numFmtId=\"166\"/><xf numFmtId=\"167\"/>"
    "<xf numFmtId=\"0\" quotePrefix=\"1\"/></cellXfs></styleSheet>";

BookText kinds() {
  BookText text;
  text.styles = dateStyles;
  text.sharedStrings =
      "<si><t>shared</t></si><si><r><t>in </t></r><r><t>runs</t></r><rPh sb=\"0\" eb=\"1\"><t>aid</t></rPh></si>"
      "<si><t xml:space=\"preserve\"> a_x000D_b &amp; &lt; </t></si>";
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"s\"><v>1</v></c><c r=\"C1\" "
      "t=\"s\"><v>2</v></c>"
      "<c r=\"D1\" t=\"inlineStr\"><is><t>inline</t></is></c>"
      "<c r=\"E1\" t=\"inlineStr\"><is><r><rPr><b/></rPr><t>rich</t></r><r><t> text</t></r></is></c></row>"
      "<row r=\"2\"><c r=\"A2\"><v>1.5</v></c><c r=\"B2\" t=\"n\"><v>-2E-3</v></c><c r=\"C2\" t=\"b\"><v>1</v></c>"
      "<c r=\"D2\" t=\"b\"><v>0</v></c><c r=\"E2\" t=\"e\"><v>#DIV/0!</v></c><c r=\"F2\" t=\"e\"><v>#N/A</v></c><c "
      "r=\"G2\"/></row>"
      "<row r=\"3\"><c r=\"A3\" s=\"1\"><v>43831</v></c><c r=\"B3\" s=\"2\"><v>43831.5</v></c><c r=\"C3\" "
      "s=\"3\"><v>7</v></c>"
      "<c r=\"D3\" s=\"4\"><v>0.5</v></c><c r=\"E3\" s=\"5\"><v>7</v></c><c r=\"F3\" "
      "t=\"d\"><v>2020-01-01T12:00:00</v></c></row>"
      "<row r=\"4\"><c r=\"A4\"><f>A2*2</f><v>3</v></c><c r=\"B4\" t=\"str\"><f>\"x\"&amp;\"y\"</f><v>xy</v></c>"
      "<c r=\"C4\"><f>A2*3</f></c><c r=\"D4\" t=\"e\"><f>1/0</f><v>#DIV/0!</v></c><c r=\"E4\" "
      "t=\"b\"><f>TRUE</f><v>1</v></c>"
      "<c r=\"F4\" t=\"str\"><f>\"\"</f><v></v></c></row></sheetData>";
  return text;
}

TEST(Value, TextsComeFromTheSharedTableAndFromTheCells) {
  OpenBook book(kinds());
  EXPECT_EQ(book.text("A1"), "shared");
  EXPECT_EQ(book.text("B1"), "in runs");
  EXPECT_EQ(book.text("C1"), " a\rb & < ");
  EXPECT_EQ(book.text("D1"), "inline");
  EXPECT_EQ(book.text("E1"), "rich text");
}

TEST(Value, NumbersBooleansErrorsAndEmptyCellsKeepTheirKind) {
  OpenBook book(kinds());
  EXPECT_EQ(book.value("A2"), Variant(1.5));
  EXPECT_EQ(book.value("B2"), Variant(-0.002));
  EXPECT_EQ(book.value("C2"), Variant(true));
  EXPECT_EQ(book.value("D2"), Variant(false));
  EXPECT_EQ(book.value("E2"), Variant(ErrorValue{2007}));
  EXPECT_EQ(book.value("F2"), Variant(ErrorValue{2042}));
  EXPECT_EQ(book.value("G2"), Variant());
  EXPECT_EQ(book.value("Z99"), Variant());
}

TEST(Value, ANumberUnderADateFormatIsADate) {
  OpenBook book(kinds());
  EXPECT_EQ(book.value("A3"), Variant(Date{43831.0}));
  EXPECT_EQ(book.value("B3"), Variant(Date{43831.5}));
  EXPECT_EQ(book.value("C3"), Variant(7.0)) << "quoted letters are no signs of a date";
  EXPECT_EQ(book.value("D3"), Variant(Date{0.5}));
  EXPECT_EQ(book.value("E3"), Variant(7.0)) << "a colour is no sign of a date";
  EXPECT_EQ(book.value("F3"), Variant(Date{43831.5}));
}

TEST(Value, DatesCountFromTheWorkbooksOwnBegin) {
  BookText text = kinds();
  text.workbookProperties = "<workbookPr date1904=\"1\"/>";
  OpenBook book(text);
  EXPECT_EQ(book.value("A3"), Variant(Date{43831.0 + 1462.0}));
  EXPECT_EQ(book.value("F3"), Variant(Date{43831.5}));
  book.range("A3").Value(Variant(Date{43831.0 + 1462.0}));
  EXPECT_NE(book.savedSheet().find("<c r=\"A3\" s=\"1\"><v>43831</v></c>"), std::string::npos);
}

TEST(Value, APlainNumberInACellOfDatesIsOneUntilTheCellGetsAnotherFormat) {
  OpenBook book(kinds());
  book.range("A3").Value(Variant(7.0));
  EXPECT_EQ(book.value("A3"), Variant(7.0));
  book.range("A3").NumberFormat("yyyy\\-mm");
  EXPECT_EQ(book.value("A3"), Variant(Date{7.0}));
}

TEST(Value, AFormulaHasItsComputedValue) {
  OpenBook book(kinds());
  EXPECT_EQ(book.value("A4"), Variant(3.0));
  EXPECT_EQ(book.value("B4"), Variant("xy"));
  EXPECT_EQ(book.value("D4"), Variant(ErrorValue{2007}));
  EXPECT_EQ(book.value("E4"), Variant(true));
  EXPECT_EQ(book.value("F4"), Variant(""));
  EXPECT_EQ(book.host().cellFormula("Data", {4, 1}), "=A2*2");
}

TEST(Value, AFormulaThatWasNeverComputedIsRefused) {
  OpenBook book(kinds());
  EXPECT_EQ(failureOf([&] { static_cast<void>(book.value("C4")); }),
            "The cell Data!C4 holds a formula without a computed value. Open the workbook in the spreadsheet, let it "
            "calculate and save it.");
}

TEST(WriteValue, EachKindIsReadBackAsItWasWritten) {
  OpenBook book(kinds());
  const std::vector<Variant> values{Variant(0.1),
                                    Variant(-1e300),
                                    Variant(std::int32_t{7}),
                                    Variant(true),
                                    Variant("text"),
                                    Variant(" two\nlines & <marks> _x000D_ \x01"),
                                    Variant(ErrorValue{2042}),
                                    Variant("Ω 中文 🎈"),
                                    Variant(""),
                                    Variant()};
  for (std::size_t i = 0; i < values.size(); ++i) {
    book.range("A" + std::to_string(i + 10)).Value(values[i]);
  }
  for (const bool again : {false, true}) {
    if (again) book.reopen();
    for (std::size_t i = 0; i < values.size(); ++i) {
      const Variant expected = values[i] == Variant(std::int32_t{7}) ? Variant(7.0) : values[i];
      EXPECT_EQ(book.value("A" + std::to_string(i + 10)), expected) << i;
    }
  }
}

TEST(WriteValue, TextWithAnEqualsSignBecomesAFormulaWithItsValue) {
  OpenBook book(kinds());
  book.range("A9").Value(Variant("=NA()"));
  EXPECT_EQ(book.value("A9"), Variant(ErrorValue{2042}));
  EXPECT_EQ(book.host().cellFormula("Data", {9, 1}), "=NA()");
  EXPECT_NE(book.savedSheet().find("<c r=\"A9\" t=\"e\"><f>NA()</f><v>#N/A</v></c>"), std::string::npos);
  book.range("A9").Value(Variant("="));
  EXPECT_EQ(book.value("A9"), Variant("="));
}

TEST(WriteValue, AFormulaThatOnlyTheSpreadsheetCanComputeHasNoValueYet) {
  OpenBook book(kinds());
  book.range("A9").Value(Variant("=A2<3"));
  failureOf([&] { static_cast<void>(book.value("A9")); });
  EXPECT_NE(book.savedSheet().find("<c r=\"A9\"><f>A2&lt;3</f></c>"), std::string::npos);
}

TEST(WriteValue, TextInACellMarkedAsTextStaysText) {
  BookText text = kinds();
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\" s=\"6\" t=\"inlineStr\"><is><t>=NA()</t></is></c></row></sheetData>";
  OpenBook book(text);
  const Variant before = book.value("A1");
  book.range("A1").Value(Variant(1.0));
  book.range("A1").Value(before);
  EXPECT_EQ(book.value("A1"), Variant("=NA()"));
}

TEST(WriteValue, ATextThatComesBackKeepsTheFormatsOfItsLetters) {
  const std::string rich = "<is><r><t>a</t></r><r><rPr><b/></rPr><t>b</t></r></is>";
  BookText text;
  text.sheet = "<sheetData><row r=\"1\"><c r=\"A1\" t=\"inlineStr\">" + rich + "</c></row></sheetData>";
  OpenBook book(text);
  const Variant before = book.value("A1");
  book.range("A1").Value(Variant(1.0));
  book.range("A1").Value(before);
  EXPECT_NE(book.savedSheet().find("t=\"inlineStr\">" + rich), std::string::npos) << book.savedSheet();
  book.range("A1").Value(Variant("abc"));
  EXPECT_EQ(book.savedSheet().find("<b/>"), std::string::npos);
}

TEST(WriteValue, TextInACellFormattedAsTextStaysText) {
  OpenBook book(kinds());
  book.range("A9").NumberFormat("@");
  for (const char* text : {"=1+1", "=== total ==="}) {
    book.range("A9").Value(Variant(text));
    EXPECT_EQ(book.value("A9"), Variant(text));
  }
}

TEST(WriteValue, TextWithAnEqualsSignThatIsNoFormulaIsRefusedAndChangesNothing) {
  OpenBook book(kinds());
  const std::string failure = failureOf([&] { book.range("A1").Value(Variant("=== total ===")); });
  EXPECT_EQ(failure, "The text \"=== total ===\" for Data!A1 begins with an equals sign and is no formula.");
  EXPECT_EQ(book.text("A1"), "shared");
}

TEST(WriteValue, NumbersThatAreNoneBecomeTheErrorsOfTheApplication) {
  OpenBook book(kinds());
  book.range("A9").Value(Variant(std::numeric_limits<double>::infinity()));
  EXPECT_EQ(book.value("A9"), Variant(ErrorValue{2007}));
  book.range("A9").Value(Variant(-std::numeric_limits<double>::infinity()));
  EXPECT_EQ(book.value("A9"), Variant(ErrorValue{2007}));
  book.range("A9").Value(Variant(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_EQ(book.value("A9"), Variant(ErrorValue{2036}));
}

TEST(WriteValue, ADateGivesAPlainCellADateFormat) {
  OpenBook book(kinds());
  book.range("A9").Value(Variant(Date{43831.0}));
  EXPECT_EQ(book.value("A9"), Variant(Date{43831.0}));
  book.reopen();
  EXPECT_EQ(book.value("A9"), Variant(Date{43831.0}));
}

TEST(WriteValue, TooLongOrBrokenTextIsRefusedAndChangesNothing) {
  OpenBook book(kinds());
  failureOf([&] { book.range("A1").Value(Variant(std::string(32768, 'x'))); });
  failureOf([&] { book.range("A1").Value(Variant("=" + std::string(8192, 'x'))); });
  failureOf([&] { book.range("A1").Value(Variant("\xFF")); });
  EXPECT_EQ(book.text("A1"), "shared");
  book.range("A1").Value(Variant(std::string(32767, 'x')));
}

TEST(WriteValue, ProtectedCellsRefuseAndUnlockedOnesTake) {
  BookText text;
  text.styles = std::string(dateStyles);
  text.styles.replace(text.styles.find("<xf numFmtId=\"14\"/>"), 19,
                      "<xf numFmtId=\"0\" applyProtection=\"1\"><protection locked=\"0\"/></xf>");
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"B1\" s=\"1\"><v>2</v></c></row></sheetData>"
      "<sheetProtection sheet=\"1\" objects=\"1\"/>";
  OpenBook book(text);
  int number = 0;
  EXPECT_EQ(failureOf([&] { book.range("A1").Value(Variant(5.0)); }, &number),
            "The cell Data!A1 is on a protected sheet. Take the sheet's protection off in the spreadsheet first.");
  EXPECT_EQ(number, 1004);
  book.range("B1").Value(Variant(5.0));
  EXPECT_EQ(book.value("A1"), Variant(1.0));
  EXPECT_EQ(book.value("B1"), Variant(5.0));
  failureOf([&] { book.range("B1").Interior().ColorIndex(3); });
  failureOf([&] { book.range("A1:B1").Sort(book.range("A1"), 1); });
  failureOf([&] { book.range("A1").AutoFilter(); });
  failureOf([&] { book.range("A:A").AutoFit(); });
}

TEST(WriteValue, CellsCoveredByAMergedOneRefuse) {
  BookText text;
  text.sheet =
      "<sheetData/><mergeCells count=\"2\"><mergeCell ref=\"B2:D3\"/><mergeCell ref=\"F1:F900\"/></mergeCells>";
  OpenBook book(text);
  book.range("B2").Value(Variant(1.0));
  EXPECT_EQ(
      failureOf([&] { book.range("C2").Value(Variant(1.0)); }),
      "The cell Data!C2 is covered by the merged cells B2:D3. Take the merge apart in the spreadsheet or choose other "
      "cells.");
  failureOf([&] { book.range("F900").Value(Variant(1.0)); });
  book.range("E2").Value(Variant(1.0));
  book.range("F901").Value(Variant(1.0));
}

TEST(WriteValue, PartsOfAnArrayFormulaRefuse) {
  BookText text;
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\"><f t=\"array\" ref=\"A1:A2\">B1:B2*2</f><v>2</v></c></row>"
      "<row r=\"2\"><c r=\"A2\"><v>4</v></c></row></sheetData>";
  OpenBook book(text);
  failureOf([&] { book.range("A2").Value(Variant(1.0)); });
  EXPECT_EQ(book.value("A2"), Variant(4.0));
}

TEST(WriteValue, OverwritingTheFirstOfASharedFormulaKeepsTheOthers) {
  BookText text;
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"B1\"><f t=\"shared\" ref=\"B1:B3\" si=\"0\">A1*$A$1</f>"
      "<v>1</v></c></row><row r=\"2\"><c r=\"B2\"><f t=\"shared\" si=\"0\"/><v>2</v></c></row>"
      "<row r=\"3\"><c r=\"B3\"><f t=\"shared\" si=\"0\"/><v>3</v></c></row></sheetData>";
  OpenBook book(text);
  book.range("B1").Value(Variant(9.0));
  EXPECT_EQ(book.host().cellFormula("Data", {3, 2}), "=A3*$A$1");
  const std::string sheet = book.savedSheet();
  EXPECT_NE(sheet.find("<c r=\"B2\"><f>A2*$A$1</f><v>2</v></c>"), std::string::npos) << sheet;
  EXPECT_EQ(sheet.find("shared"), std::string::npos);
}

TEST(WriteValue, TheHeaderOfATableAndItsPartStayTheSame) {
  BookText text;
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\" t=\"str\"><v>one</v></c><c r=\"B1\" t=\"str\"><v>two</v></c></row>"
      "<row r=\"2\"><c r=\"A2\"><v>1</v></c></row></sheetData><tableParts count=\"1\"><tablePart "
      "r:id=\"rId1\"/></tableParts>";
  text.sheetRelations =
      "<Relationship Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/table\" "
      "Target=\"../tables/table1.xml\"/>";
  text.more.emplace_back(
      "xl/tables/table1.xml",
      "<table xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" id=\"1\" name=\"T\" "
      "displayName=\"T\" ref=\"A1:B2\"><autoFilter ref=\"A1:B2\"/><tableColumns count=\"2\">"
      "<tableColumn id=\"1\" name=\"one\"/><tableColumn id=\"2\" name=\"two\"/></tableColumns></table>");
  OpenBook book(text);
  book.range("B1").Value(Variant("One"));
  const auto parts = book.saved();
  EXPECT_NE(parts.at("xl/tables/table1.xml").find("<tableColumn id=\"2\" name=\"One2\"/>"), std::string::npos);
  EXPECT_NE(parts.at("xl/worksheets/sheet1.xml").find("<t>One2</t>"), std::string::npos);
}

}  // namespace
}  // namespace mervane::workbook::tests
