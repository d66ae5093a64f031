#include <gtest/gtest.h>

#include "fixture.h"

namespace mervane::workbook::tests {
namespace {

/// One value a row in column A, and the row's first number in column B.
BookText column(const std::vector<std::string>& cells) {
  BookText text;
  text.sheet = "<sheetData>";
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::string row = std::to_string(i + 1);
    text.sheet += "<row r=\"" + row + "\">";
    std::string cell = cells[i];
    if (!cell.empty()) text.sheet += cell.insert(2, " r=\"A" + row + "\"");
    text.sheet += "<c r=\"B" + row + "\"><v>" + row + "</v></c></row>";
  }
  text.sheet += "</sheetData>";
  return text;
}

std::vector<double> order(OpenBook& book, int rows) {
  std::vector<double> result;
  for (int row = 1; row <= rows; ++row) {
    const Variant value = book.value("B" + std::to_string(row));
    result.push_back(value.isEmpty() ? 0.0 : *value.getIf<double>());
  }
  return result;
}

void sort(OpenBook& book, const std::string& area, int key, int direction = 1) {
  book.range(area).Sort(book.range(area).Columns(key), direction);
}

const std::vector<std::string> mixed{"<c t=\"e\"><v>#N/A</v></c>",
                                     "",
                                     "<c t=\"b\"><v>1</v></c>",
                                     "<c t=\"str\"><v>b</v></c>",
                                     "<c><v>3</v></c>",
                                     "<c t=\"b\"><v>0</v></c>",
                                     "<c><v>-2</v></c>",
                                     "<c t=\"str\"><v>A</v></c>",
                                     "<c t=\"str\"><v>10</v></c>"};

TEST(Sort, NumbersComeBeforeTextsBeforeBooleansBeforeErrorsBeforeEmptyCells) {
  OpenBook book(column(mixed));
  sort(book, "A1:B9", 1);
  EXPECT_EQ(order(book, 9), (std::vector<double>{7, 5, 9, 8, 4, 6, 3, 1, 2}));
}

TEST(Sort, EmptyCellsStayLastInDescendingOrder) {
  OpenBook book(column(mixed));
  sort(book, "A1:B9", 1, 2);
  EXPECT_EQ(order(book, 9), (std::vector<double>{1, 3, 6, 4, 8, 9, 5, 7, 2}));
}

TEST(Sort, RowsWithEqualKeysKeepTheirOrder) {
  std::vector<std::string> cells;
  for (int i = 0; i < 300; ++i) cells.push_back("<c><v>" + std::to_string(i % 3) + "</v></c>");
  OpenBook book(column(cells));
  sort(book, "A1:B300", 1);
  const std::vector<double> result = order(book, 300);
  for (std::size_t i = 0; i < 300; ++i) {
    ASSERT_EQ(result[i], static_cast<double>((i % 100) * 3 + i / 100 + 1)) << i;
  }
}

TEST(Sort, TheFirstRowTakesPartAndCellsOutsideStay) {
  OpenBook book(column({"<c><v>3</v></c>", "<c><v>2</v></c>", "<c><v>1</v></c>", "<c><v>0</v></c>"}));
  book.range("C1").Value(Variant("right"));
  sort(book, "A1:B3", 1);
  EXPECT_EQ(order(book, 4), (std::vector<double>{3, 2, 1, 4}));
  EXPECT_EQ(book.value("C1"), Variant("right"));
  EXPECT_EQ(book.value("A4"), Variant(0.0));
}

Variant fill(OpenBook& book, const char* cell) {
  return book.range(cell).Interior().object()->invoke(sheet::Access::get, sheet::member::ColorIndex, {});
}

Variant numberFormat(OpenBook& book, const char* cell) {
  return book.range(cell).object()->invoke(sheet::Access::get, sheet::member::NumberFormat, {});
}

TEST(Sort, FormatsMoveWithTheirCells) {
  OpenBook book(column({"<c><v>2</v></c>", "<c><v>1</v></c>"}));
  book.range("B1").Interior().ColorIndex(36);
  sort(book, "A1:B2", 1);
  EXPECT_EQ(fill(book, "B2"), Variant(std::int32_t{36}));
  EXPECT_EQ(fill(book, "B1"), Variant(std::int32_t{-4142}));
}

TEST(Sort, FormatsAndHyperlinksOfTheKeyColumnStay) {
  BookText text = column({"<c><v>3</v></c>", "", "<c><v>1</v></c>", "<c><v>2</v></c>"});
  text.sheet += "<hyperlinks><hyperlink ref=\"A1:A2\" location=\"one\"/></hyperlinks>";
  OpenBook book(text);
  book.range("A1").Interior().ColorIndex(36);
  book.range("A1").NumberFormat("0.00%");
  book.range("A4").Interior().ColorIndex(50);
  sort(book, "A1:B4", 1);
  EXPECT_EQ(order(book, 4), (std::vector<double>{3, 4, 1, 2}));
  EXPECT_EQ(book.value("A1"), Variant(1.0));
  EXPECT_EQ(book.value("A3"), Variant(3.0));
  EXPECT_EQ(book.value("A4"), Variant());
  EXPECT_EQ(fill(book, "A1"), Variant(std::int32_t{36}));
  EXPECT_EQ(fill(book, "A3"), Variant(std::int32_t{-4142}));
  EXPECT_EQ(fill(book, "A4"), Variant(std::int32_t{50}));
  EXPECT_EQ(numberFormat(book, "A1"), Variant("0.00%"));
  EXPECT_EQ(numberFormat(book, "A3"), Variant("General"));
  EXPECT_NE(book.savedSheet().find("<hyperlink ref=\"A1:A2\" location=\"one\"/>"), std::string::npos);
}

/// A run borrows the column beside its rows for the keys: it keeps the values, writes numbers, sorts, reads the numbers
/// and puts the values back.
TEST(Sort, ABorrowedColumnOfDatesGivesItsNumbersAndItsDatesBackInEitherCalendar) {
  for (const char* calendar : {"0", "1"}) {
    SCOPED_TRACE(calendar);
    BookText text;
    text.workbookProperties = "<workbookPr date1904=\"" + std::string(calendar) + "\"/>";
    text.styles =
        "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><cellXfs count=\"2\">"
        "<xf numFmtId=\"0\"/><xf numFmtId=\"14\"/></cellXfs></styleSheet>";
    text.sheet =
        "<sheetData><row r=\"1\"><c r=\"A1\"><v>10</v></c><c r=\"B1\" s=\"1\"><v>41000</v></c></row>"
        "<row r=\"2\"><c r=\"A2\"><v>20</v></c><c r=\"B2\" s=\"1\"><v>1</v></c></row>"
        "<row r=\"3\"><c r=\"A3\"><v>30</v></c><c r=\"B3\"><v>7</v></c></row></sheetData>";
    OpenBook book(text);
    const std::vector<std::string> cells{"B1", "B2", "B3"};
    std::vector<Variant> saved;
    std::int32_t key = 3;
    for (const std::string& cell : cells) {
      saved.push_back(book.value(cell));
      book.range(cell).Value(Variant(key--));
    }
    EXPECT_EQ(saved[0].kind(), Variant::Kind::date);
    EXPECT_EQ(saved[2], Variant(7.0));
    sort(book, "A1:B3", 2);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      EXPECT_EQ(book.value(cells[i]), Variant(static_cast<double>(i + 1)));
      book.range(cells[i]).Value(saved[i]);
      EXPECT_EQ(book.value(cells[i]), saved[i]);
    }
    const std::string sheet = book.savedSheet();
    EXPECT_NE(sheet.find("<c r=\"A1\"><v>30</v></c><c r=\"B1\" s=\"1\"><v>41000</v></c>"), std::string::npos) << sheet;
    EXPECT_NE(sheet.find("<c r=\"A2\"><v>20</v></c><c r=\"B2\" s=\"1\"><v>1</v></c>"), std::string::npos) << sheet;
    EXPECT_NE(sheet.find("<c r=\"A3\"><v>10</v></c><c r=\"B3\"><v>7</v></c>"), std::string::npos) << sheet;
  }
}

TEST(Sort, APlainNumberAmongDatesStaysOneWhereverItComes) {
  BookText text = column({"<c s=\"1\"><v>41000</v></c>", "<c s=\"1\"><v>41001</v></c>"});
  text.styles =
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><cellXfs count=\"2\">"
      "<xf numFmtId=\"0\"/><xf numFmtId=\"14\"/></cellXfs></styleSheet>";
  OpenBook book(text);
  book.range("A2").Value(Variant(std::int32_t{3}));
  sort(book, "A1:B2", 1);
  EXPECT_EQ(book.value("A1"), Variant(3.0));
  EXPECT_EQ(book.value("A2"), Variant(Date{41000.0}));
}

TEST(Sort, FormulasMoveAsTheyAreCopied) {
  // The example of the application's own documentation for what a sort does to references, one row further down.
  BookText text;
  text.sheet = "<sheetData>";
  for (const char* row : {"2", "3", "4"}) {
    const std::string r(row);
    const std::string other = r == "2" ? "4" : r == "4" ? "2" : "3";
    text.sheet += "<row r=\"" + r + "\"><c r=\"A" + r + "\"><v>" + other + "</v></c><c r=\"B" + r + "\"><f>A" + other +
                  "</f><v>0</v></c><c r=\"C" + r + "\"><f>$A$" + other + "</f><v>0</v></c><c r=\"D" + r +
                  "\"><f>SUM(A:A)+Data!A" + r + "</f><v>0</v></c></row>";
  }
  text.sheet += "</sheetData>";
  OpenBook book(text);
  sort(book, "A2:D4", 1);
  const auto formula = [&](int row, int column) { return book.host().cellFormula("Data", {row, column}); };
  EXPECT_EQ(formula(2, 2), "=#REF!");
  EXPECT_EQ(formula(3, 2), "=A3");
  EXPECT_EQ(formula(4, 2), "=A6");
  EXPECT_EQ(formula(2, 3), "=$A$2");
  EXPECT_EQ(formula(4, 3), "=$A$4");
  EXPECT_EQ(formula(2, 4), "=SUM(A:A)+Data!A2");
}

TEST(Sort, ASharedFormulaWithWholeColumnsKeepsTheColumnsOfEachMember) {
  BookText text = column({"<c><v>2</v></c>", "<c><v>1</v></c>"});
  text.sheet.insert(text.sheet.find("</sheetData>"),
                    "<row r=\"9\"><c r=\"B9\"><f t=\"shared\" ref=\"B9:D9\" si=\"0\">SUM(B:B)-SUM($1:3)</f><v>0</v></c>"
                    "<c r=\"C9\"><f t=\"shared\" si=\"0\"/><v>0</v></c><c r=\"D9\"><f t=\"shared\" si=\"0\"/><v>0</v>"
                    "</c></row>");
  OpenBook book(text);
  sort(book, "A1:B2", 1);
  const std::string saved = book.savedSheet();
  EXPECT_NE(saved.find("<f>SUM(B:B)-SUM($1:3)</f>"), std::string::npos) << saved;
  EXPECT_NE(saved.find("<f>SUM(C:C)-SUM($1:3)</f>"), std::string::npos) << saved;
  EXPECT_NE(saved.find("<f>SUM(D:D)-SUM($1:3)</f>"), std::string::npos) << saved;
}

TEST(Sort, FormulasGoOnNamingTheCellsOfTheirRow) {
  BookText text;
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\"><v>2</v></c><c r=\"B1\"><f t=\"shared\" ref=\"B1:B2\" "
      "si=\"0\">A1*10</f><v>20</v></c></row>"
      "<row r=\"2\"><c r=\"A2\"><v>1</v></c><c r=\"B2\"><f t=\"shared\" si=\"0\"/><v>10</v></c></row></sheetData>";
  text.workbookRelations =
      "<Relationship Id=\"rId7\" "
      "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/calcChain\" "
      "Target=\"calcChain.xml\"/>";
  text.contentTypes = "<Override PartName=\"/xl/calcChain.xml\" ContentType=\"application/x\"/>";
  text.more.emplace_back("xl/calcChain.xml", "<calcChain><c r=\"B1\" i=\"1\"/></calcChain>");
  OpenBook book(text);
  sort(book, "A1:B2", 1);
  EXPECT_EQ(book.value("B1"), Variant(10.0));
  EXPECT_EQ(book.host().cellFormula("Data", {1, 2}), "=A1*10");
  EXPECT_EQ(book.host().cellFormula("Data", {2, 2}), "=A2*10");
  const auto parts = book.saved();
  EXPECT_EQ(parts.count("xl/calcChain.xml"), 0U) << "the chain of calculation no longer holds";
  EXPECT_EQ(parts.at("xl/_rels/workbook.xml.rels").find("calcChain"), std::string::npos);
  EXPECT_EQ(parts.at("[Content_Types].xml").find("calcChain"), std::string::npos);
  EXPECT_NE(parts.at("xl/workbook.xml").find("fullCalcOnLoad=\"1\""), std::string::npos);
}

TEST(Sort, MergedCellsArraysAndHiddenRowsInTheWayAreRefusedAndNothingMoves) {
  for (const std::string obstacle : {"merge", "array", "what-if table", "hidden row"}) {
    BookText text = column({"<c><v>2</v></c>", "<c><v>1</v></c>"});
    if (obstacle == "merge") {
      text.sheet += "<mergeCells count=\"1\"><mergeCell ref=\"A2:B2\"/></mergeCells>";
    } else if (obstacle == "array") {
      text.sheet.replace(text.sheet.find("<c r=\"B1\">"), 10, "<c r=\"B1\"><f t=\"array\" ref=\"B1:B2\">A1:A2</f>");
    } else if (obstacle == "what-if table") {
      text.sheet.replace(text.sheet.find("<c r=\"B1\">"), 10,
                         "<c r=\"B1\"><f t=\"dataTable\" ref=\"B1\" dt2D=\"1\" dtr=\"1\" r1=\"A1\" r2=\"A2\"/>");
    } else {
      text.sheet.replace(text.sheet.find("<row r=\"2\">"), 11, "<row r=\"2\" hidden=\"1\">");
    }
    OpenBook book(text);
    int number = 0;
    const std::string reason = failureOf([&] { sort(book, "A1:B2", 1); }, &number);
    EXPECT_NE(reason.find(obstacle == "merge"        ? "merged"
                          : obstacle == "hidden row" ? "row 2 is hidden"
                                                     : obstacle),
              std::string::npos)
        << reason;
    EXPECT_EQ(number, 1004);
    EXPECT_EQ(book.value("A1"), Variant(2.0)) << obstacle;
  }
}

TEST(Sort, AKeyOutsideOfTheRangeIsRefused) {
  OpenBook book(column({"<c><v>2</v></c>", "<c><v>1</v></c>"}));
  failureOf([&] { book.range("A1:A2").Sort(book.range("B1:B2"), 1); });
}

TEST(Sort, HyperlinksMoveWithTheirCells) {
  BookText text = column({"<c><v>3</v></c>", "<c><v>1</v></c>", "<c><v>2</v></c>", "<c><v>0</v></c>"});
  text.sheet +=
      "<hyperlinks><hyperlink ref=\"A1\" location=\"one\"/><hyperlink ref=\"A2:C3\" location=\"several\"/>"
      "<hyperlink ref=\"B1:B4\" location=\"all\"/><hyperlink ref=\"A4\" location=\"outside\"/></hyperlinks>";
  OpenBook book(text);
  for (int row = 1; row <= 3; ++row) book.range("C" + std::to_string(row)).Value(book.value("A" + std::to_string(row)));
  sort(book, "A1:C3", 3);
  EXPECT_NE(book.savedSheet().find("<hyperlinks><hyperlink ref=\"A3\" location=\"one\"/>"
                                   "<hyperlink ref=\"A1\" location=\"several\"/><hyperlink ref=\"B1\" "
                                   "location=\"several\"/><hyperlink ref=\"C2\" location=\"several\"/>"
                                   "<hyperlink ref=\"A2\" location=\"several\"/><hyperlink ref=\"B2\" "
                                   "location=\"several\"/><hyperlink ref=\"C3\" location=\"several\"/>"
                                   "<hyperlink ref=\"B1:B4\" location=\"all\"/>"
                                   "<hyperlink ref=\"A4\" location=\"outside\"/></hyperlinks>"),
            std::string::npos)
      << book.savedSheet();
}

TEST(Sort, HyperlinksBesideTheSortedCellsKeepTheirBytes) {
  BookText text = column({"<c><v>3</v></c>", "<c><v>1</v></c>"});
  const std::string links = "<hyperlinks ><hyperlink  ref='D1' location='x'/></hyperlinks>";
  text.sheet += links;
  OpenBook book(text);
  sort(book, "A1:B2", 1);
  EXPECT_NE(book.savedSheet().find(links), std::string::npos);
}

TEST(Sort, CellsWithCommentsAreKnown) {
  BookText text = column({"<c><v>3</v></c>", "<c><v>1</v></c>"});
  text.sheetRelations =
      "<Relationship Id=\"rId7\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/comments\" "
      "Target=\"../comments1.xml\"/>";
  text.more.emplace_back("xl/comments1.xml",
                         "<comments xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><authors/>"
                         "<commentList><comment ref=\"B2\"/><comment ref=\"D1\"/><comment ref=\"A1\"/>"
                         "</commentList></comments>");
  OpenBook book(text);
  EXPECT_EQ(book.host().commentedCells("Data", {1, 1, 2, 2}), (std::vector<CellAddress>{{2, 2}, {1, 1}}));
  EXPECT_TRUE(book.host().commentedCells("Data", {3, 1, 9, 9}).empty());
}

TEST(Sort, ExtrasOfACellMoveWithIt) {
  BookText text = column({"<c><v>2</v></c>", "<c><v>1</v></c>"});
  text.sheet.replace(text.sheet.find("<c r=\"B1\">"), 10, "<c r=\"B1\" vm=\"1\">");
  OpenBook book(text);
  sort(book, "A1:B2", 1);
  EXPECT_NE(book.savedSheet().find("<c r=\"B2\" vm=\"1\"><v>1</v></c>"), std::string::npos);
}

}  // namespace
}  // namespace mervane::workbook::tests
