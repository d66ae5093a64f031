#include <gtest/gtest.h>

#include <regex>

#include "fixture.h"

namespace mervane::workbook::tests {
namespace {

using sheet::Access;
namespace member = sheet::member;

BookText numbers(int rows) {
  BookText text;
  text.sheet = "<sheetData>";
  for (int row = 1; row <= rows; ++row) {
    text.sheet += "<row r=\"" + std::to_string(row) + "\"><c r=\"A" + std::to_string(row) + "\"><v>0.5</v></c></row>";
  }
  text.sheet += "</sheetData>";
  return text;
}

int countOf(const std::string& text, const std::string& what) {
  int count = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

Variant read(const sheet::Proxy& object, member::Id what) {
  return object.object()->invoke(Access::get, what, {});
}

TEST(Formats, FillsByPaletteAndByColour) {
  OpenBook book(numbers(3));
  book.range("A1").Interior().Pattern(1);
  book.range("A1").Interior().ColorIndex(36);
  book.range("A2").Interior().Pattern(1);
  book.range("A2").Interior().Color(15395562);
  for (const bool again : {false, true}) {
    if (again) book.reopen();
    EXPECT_EQ(read(book.range("A1").Interior(), member::ColorIndex), Variant(std::int32_t{36}));
    EXPECT_EQ(read(book.range("A1").Interior(), member::Pattern), Variant(std::int32_t{1}));
    EXPECT_EQ(read(book.range("A2").Interior(), member::Color), Variant(15395562.0));
    EXPECT_EQ(read(book.range("A3").Interior(), member::ColorIndex), Variant(std::int32_t{-4142}));
    EXPECT_EQ(read(book.range("A1:A3").Interior(), member::ColorIndex), Variant(Null{}));
  }
  const std::string styles = book.saved().at("xl/styles.xml");
  EXPECT_NE(styles.find("<fgColor indexed=\"43\"/>"), std::string::npos);
  EXPECT_NE(styles.find("<fgColor rgb=\"FFEAEAEA\"/>"), std::string::npos);
}

TEST(Formats, AWorkbookWithAPaletteOfItsOwnGetsTheApplicationsColoursAllTheSame) {
  // A book with a chart, saved by LibreOffice, listed other colours under these numbers, and the rows came out white.
  BookText text = numbers(1);
  text.styles =
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><fonts><font/></fonts>"
      "<fills><fill><patternFill/></fill></fills><borders><border/></borders><cellXfs><xf/></cellXfs>"
      "<colors><indexedColors><rgbColor rgb=\"FF010203\"/></indexedColors></colors></styleSheet>";
  OpenBook book(text);
  book.range("A1").Interior().Pattern(1);
  book.range("A1").Interior().ColorIndex(36);
  book.range("A1").Borders(9).LineStyle(1);
  book.range("A1").Borders(9).ColorIndex(3);
  for (const bool again : {false, true}) {
    if (again) book.reopen();
    EXPECT_EQ(read(book.range("A1").Interior(), member::ColorIndex), Variant(std::int32_t{36}));
    EXPECT_EQ(read(book.range("A1").Interior(), member::Color), Variant(double{0x99FFFF}));
  }
  const std::string styles = book.saved().at("xl/styles.xml");
  EXPECT_NE(styles.find("<fgColor rgb=\"FFFFFF99\"/>"), std::string::npos) << styles;
  EXPECT_NE(styles.find("<color rgb=\"FFFF0000\"/>"), std::string::npos) << styles;
}

TEST(Formats, APaletteThatSaysWhatTheApplicationsSaysIsUsedByNumber) {
  BookText text = numbers(1);
  std::string colors;
  for (int number = 0; number < 64; ++number) colors += number == 43 ? "<rgbColor rgb=\"00FFFF99\"/>" : "<rgbColor/>";
  text.styles =
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><fonts><font/></fonts>"
      "<fills><fill><patternFill/></fill></fills><borders><border/></borders><cellXfs><xf/></cellXfs>"
      "<colors><indexedColors>" +
      colors + "</indexedColors></colors></styleSheet>";
  OpenBook book(text);
  book.range("A1").Interior().ColorIndex(36);
  EXPECT_NE(book.saved().at("xl/styles.xml").find("<fgColor indexed=\"43\"/>"), std::string::npos);
}

TEST(Formats, ColoursOutsideOfThePaletteAreRefused) {
  OpenBook book(numbers(1));
  for (const int index : {0, 57, -1}) failureOf([&] { book.range("A1").Interior().ColorIndex(index); });
}

TEST(Formats, ManyColouredRowsShareFewFormats) {
  OpenBook book(numbers(2000));
  for (int row = 1; row <= 2000; ++row) {
    const sheet::Interior interior = book.range("A" + std::to_string(row)).Resize(1, 4).Interior();
    interior.Pattern(1);
    interior.ColorIndex(row % 3 + 34);
  }
  const std::string styles = book.saved().at("xl/styles.xml");
  EXPECT_NE(styles.find("<cellXfs count=\"4\">"), std::string::npos) << styles;
  EXPECT_NE(styles.find("<fills count=\"5\">"), std::string::npos) << styles;
}

TEST(Formats, ExistingFormatsStayAsTheyAre) {
  BookText text = numbers(2);
  text.styles =
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><fonts "
      "count=\"2\"><font><i/><sz "
      "val=\"9\"/></font><font><sz val=\"11\"/></font></fonts><fills count=\"1\"><fill><patternFill "
      "patternType=\"none\"/></fill></fills>"
      "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
      "<cellXfs count=\"2\"><xf numFmtId=\"0\" fontId=\"1\" fillId=\"0\" borderId=\"0\"/><xf numFmtId=\"2\" "
      "fontId=\"0\" "
      "fillId=\"0\" borderId=\"0\"><alignment wrapText=\"1\"/></xf></cellXfs><dxfs count=\"0\"/><extLst><ext "
      "uri=\"x\"/></extLst></styleSheet>";
  text.sheet.replace(text.sheet.find("<c r=\"A2\">"), 10, "<c r=\"A2\" s=\"1\">");
  OpenBook book(text);
  book.range("A2").Font().Bold(true);
  const auto parts = book.saved();
  const std::string& styles = parts.at("xl/styles.xml");
  EXPECT_NE(styles.find("<font><b/><i/><sz val=\"9\"/></font></fonts>"), std::string::npos) << styles;
  EXPECT_NE(styles.find(
                "<xf numFmtId=\"2\" fontId=\"0\" fillId=\"0\" borderId=\"0\"><alignment wrapText=\"1\"/></xf><xf "
                "numFmtId=\"2\" "
                "fontId=\"2\" fillId=\"0\" borderId=\"0\" applyFont=\"1\"><alignment wrapText=\"1\"/></xf></cellXfs>"),
            std::string::npos)
      << styles;
  EXPECT_NE(styles.find("<extLst><ext uri=\"x\"/></extLst>"), std::string::npos);
  EXPECT_NE(parts.at("xl/worksheets/sheet1.xml").find("<c r=\"A2\" s=\"2\">"), std::string::npos);
}

TEST(Formats, FormatsThatNoCellHasInTheEndAreNotWritten) {
  OpenBook book(numbers(1));
  book.range("A1").Interior().ColorIndex(3);
  book.range("A1").Interior().ColorIndex(4);
  book.range("A1").NumberFormat("0.000\"m\"");
  book.range("A1").NumberFormat("0.00%");
  const std::string styles = book.saved().at("xl/styles.xml");
  EXPECT_EQ(styles.find("indexed=\"10\""), std::string::npos);
  EXPECT_EQ(styles.find("numFmts"), std::string::npos) << styles;
  EXPECT_NE(styles.find("<xf numFmtId=\"10\""), std::string::npos);
}

TEST(Formats, NumberFormatsOfOnesOwnAreAdded) {
  OpenBook book(numbers(2));
  book.range("A1").NumberFormat("0.000\"m\"");
  EXPECT_EQ(read(book.range("A1"), member::NumberFormat), Variant("0.000\"m\""));
  EXPECT_EQ(read(book.range("A1:A2"), member::NumberFormat), Variant(Null{}));
  const std::string styles = book.saved().at("xl/styles.xml");
  EXPECT_NE(
      styles.find("<numFmts count=\"1\"><numFmt numFmtId=\"164\" formatCode=\"0.000&quot;m&quot;\"/></numFmts><fonts"),
      std::string::npos)
      << styles;
  book.reopen();
  EXPECT_EQ(read(book.range("A1"), member::NumberFormat), Variant("0.000\"m\""));
}

TEST(Formats, ANewNumberFormatTakesTheFirstFreeNumberEvenWhereTheLargestIsInUse) {
  BookText text = numbers(1);
  text.styles =
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><numFmts count=\"2\">"
      "<numFmt numFmtId=\"164\" formatCode=\"0.0\"/><numFmt numFmtId=\"2147483647\" formatCode=\"0.00000\"/></numFmts>"
      "<cellXfs count=\"1\"><xf numFmtId=\"0\"/></cellXfs></styleSheet>";
  OpenBook book(text);
  book.range("A1").NumberFormat("0.000\"m\"");
  const std::string styles = book.saved().at("xl/styles.xml");
  EXPECT_NE(styles.find("<numFmt numFmtId=\"165\" formatCode=\"0.000&quot;m&quot;\"/>"), std::string::npos) << styles;
}

TEST(Formats, AStyleSheetWithoutFontsFillsAndBordersGetsThoseThatAreAskedForAlone) {
  BookText text = numbers(1);
  text.styles =
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><cellXfs count=\"1\">"
      "<xf numFmtId=\"0\"/></cellXfs></styleSheet>";
  OpenBook book(text);
  book.range("A1").Interior().ColorIndex(3);
  const std::string styles = book.saved().at("xl/styles.xml");
  EXPECT_EQ(styles.find("<fonts"), std::string::npos) << styles;
  EXPECT_EQ(styles.find("<borders"), std::string::npos) << styles;
  EXPECT_NE(styles.find("<fills count=\"1\"><fill><patternFill patternType=\"solid\">"), std::string::npos) << styles;
  EXPECT_NE(styles.find("<xf numFmtId=\"0\" fillId=\"0\" applyFill=\"1\"/>"), std::string::npos) << styles;
}

TEST(Formats, BordersGoToTheSidesOfTheCells) {
  OpenBook book(numbers(1));
  const sheet::Range block = book.range("B2:D4");
  for (const int edge : {7, 8, 9, 10, 11, 12}) {
    const sheet::Border border = block.Borders(edge);
    border.LineStyle(1);
    border.Weight(edge < 11 ? 2 : 1);
    border.ColorIndex(-4105);
  }
  book.reopen();
  const auto weight = [&](const char* cell, int edge) { return read(book.range(cell).Borders(edge), member::Weight); };
  const auto style = [&](const char* cell, int edge) {
    return read(book.range(cell).Borders(edge), member::LineStyle);
  };
  EXPECT_EQ(weight("B2", 7), Variant(std::int32_t{2}));
  EXPECT_EQ(weight("B2", 8), Variant(std::int32_t{2}));
  EXPECT_EQ(weight("B2", 9), Variant(std::int32_t{1}));
  EXPECT_EQ(weight("B2", 10), Variant(std::int32_t{1}));
  EXPECT_EQ(weight("D4", 9), Variant(std::int32_t{2}));
  EXPECT_EQ(weight("D4", 10), Variant(std::int32_t{2}));
  EXPECT_EQ(style("C3", 7), Variant(std::int32_t{1}));
  EXPECT_EQ(style("E3", 7), Variant(std::int32_t{-4142}));
  EXPECT_NE(book.saved().at("xl/styles.xml").find("<left style=\"thin\"><color indexed=\"64\"/></left>"),
            std::string::npos);
}

TEST(Formats, AnInnerLineOfASingleRowOrColumnIsRefused) {
  OpenBook book(numbers(1));
  failureOf([&] { book.range("A1:C1").Borders(12).LineStyle(1); });
  failureOf([&] { book.range("A1:A3").Borders(11).LineStyle(1); });
  failureOf([&] { static_cast<void>(book.range("A1").Borders(13)); });
}

TEST(Formats, NewCellsTakeTheFormatOfTheirRowOrColumn) {
  BookText text;
  text.styles =
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><fonts "
      "count=\"1\"><font/></fonts>"
      "<cellXfs count=\"3\"><xf numFmtId=\"0\"/><xf numFmtId=\"9\"/><xf numFmtId=\"2\"/></cellXfs></styleSheet>";
  text.sheet =
      "<cols><col min=\"2\" max=\"3\" width=\"9\" style=\"1\"/></cols>"
      "<sheetData><row r=\"5\" s=\"2\" customFormat=\"1\"/></sheetData>";
  OpenBook book(text);
  for (const char* cell : {"B2", "B5", "A1"}) book.range(cell).Value(Variant(1.0));
  const std::string sheet = book.savedSheet();
  EXPECT_NE(sheet.find("<c r=\"B2\" s=\"1\">"), std::string::npos);
  EXPECT_NE(sheet.find("<c r=\"B5\" s=\"2\">"), std::string::npos);
  EXPECT_NE(sheet.find("<c r=\"A1\"><v>"), std::string::npos);
}

TEST(AutoFit, WidensToTheLongestContentsAndSplitsColumnSpans) {
  BookText text = numbers(2);
  text.sheet.insert(0, "<cols><col min=\"1\" max=\"3\" width=\"5\" outlineLevel=\"1\"/></cols>");
  OpenBook book(text);
  book.range("B1").Value(Variant("Cluster 1 weighted average (%)"));
  book.range("A1:C1").Columns().EntireColumn().AutoFit();
  const std::string sheet = book.savedSheet();
  EXPECT_NE(sheet.find("<col min=\"3\" max=\"3\" width=\"5\" outlineLevel=\"1\"/></cols><sheetData>"),
            std::string::npos);
  EXPECT_EQ(countOf(sheet, "<cols>"), 1);
  const double width = book.range("B1").Width();
  EXPECT_GT(width, 130.0);
  EXPECT_LT(width, 190.0);
  book.range("B2").Value(Variant("a much longer text than the one that stood there before"));
  book.range("B1").Columns().EntireColumn().AutoFit();
  EXPECT_GT(book.range("B1").Width(), width);
  book.range("B2").Value(Variant("x"));
  book.range("B1").Columns().EntireColumn().AutoFit();
  EXPECT_DOUBLE_EQ(book.range("B1").Width(), width);
}

TEST(AutoFit, FollowsACellThatIsWrittenAndFormattedAgain) {
  BookText text = numbers(3);
  OpenBook again(text);
  OpenBook once(text);
  const auto fit = [](OpenBook& book) { book.range("B1").Columns().EntireColumn().AutoFit(); };
  fit(again);
  again.range("B2").Value(Variant(2.0 / 3.0));
  again.range("B2").NumberFormat("0.00%");
  fit(again);
  again.range("B2").NumberFormat("0.0000000%");
  again.range("B2").NumberFormat("0%");
  fit(again);
  once.range("B2").Value(Variant(2.0 / 3.0));
  once.range("B2").NumberFormat("0%");
  fit(once);
  EXPECT_DOUBLE_EQ(again.range("B1").Width(), once.range("B1").Width());
}

TEST(AutoFit, FindsTheWidestNumberBehindNarrowerOnes) {
  OpenBook book(numbers(1));
  book.range("B1").Value(Variant(1.5));
  book.range("B2").Value(Variant(123456.789));
  book.range("B3").Value(Variant(-123456.789));
  book.range("B4").Value(Variant(7.0));
  book.range("D1").Value(Variant(-123456.789));
  book.range("B1:D1").Columns().EntireColumn().AutoFit();
  EXPECT_DOUBLE_EQ(book.range("B1").Width(), book.range("D1").Width());
}

TEST(AutoFit, WorksOnWholeColumnsOnly) {
  OpenBook book(numbers(1));
  failureOf([&] { book.range("A1:A5").AutoFit(); });
}

}  // namespace
}  // namespace mervane::workbook::tests
