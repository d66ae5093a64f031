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

TEST(Sort, FormatsMoveWithTheirCells) {
  OpenBook book(column({"<c><v>2</v></c>", "<c><v>1</v></c>"}));
  book.range("A1").Interior().ColorIndex(36);
  sort(book, "A1:B2", 1);
  const auto fill = [&](const char* cell) {
    return book.range(cell).Interior().object()->invoke(sheet::Access::get, sheet::member::ColorIndex, {});
  };
  EXPECT_EQ(fill("A2"), Variant(std::int32_t{36}));
  EXPECT_EQ(fill("A1"), Variant(std::int32_t{-4142}));
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

TEST(Sort, MergedCellsAndArraysInTheWayAreRefusedAndNothingMoves) {
  for (const std::string obstacle : {"merge", "array"}) {
    BookText text = column({"<c><v>2</v></c>", "<c><v>1</v></c>"});
    if (obstacle == "merge") {
      text.sheet += "<mergeCells count=\"1\"><mergeCell ref=\"A2:B2\"/></mergeCells>";
    } else {
      text.sheet.replace(text.sheet.find("<c r=\"B1\">"), 10, "<c r=\"B1\"><f t=\"array\" ref=\"B1:B2\">A1:A2</f>");
    }
    OpenBook book(text);
    int number = 0;
    failureOf([&] { sort(book, "A1:B2", 1); }, &number);
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
  sort(book, "A1:B3", 1);
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
  text.sheet.replace(text.sheet.find("<c r=\"A1\">"), 10, "<c r=\"A1\" vm=\"1\">");
  OpenBook book(text);
  sort(book, "A1:B2", 1);
  EXPECT_NE(book.savedSheet().find("<c r=\"A2\" vm=\"1\"><v>2</v></c>"), std::string::npos);
}

}  // namespace
}  // namespace mervane::workbook::tests
