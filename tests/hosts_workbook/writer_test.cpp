#include <gtest/gtest.h>

#include <fstream>

#include "fixture.h"

namespace mervane::workbook::tests {
namespace {

/// A sheet with everything around its cells that a run must not lose.
BookText rich() {
  BookText text;
  text.rootAttributes =
      " xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\" mc:Ignorable=\"x14ac\" "
      "xmlns:x14ac=\"http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac\"";
  text.sheet =
      "<sheetPr><tabColor rgb=\"FF00FF00\"/></sheetPr>\n<dimension ref=\"A1:B2\"/>"
      "<sheetViews><sheetView workbookViewId=\"0\" zoomScale=\"80\"/></sheetViews>"
      "<sheetFormatPr defaultRowHeight=\"15\" x14ac:dyDescent=\"0.25\"/>"
      "<sheetData><row r=\"1\" spans=\"1:2\" ht=\"20\" customHeight=\"1\" x14ac:dyDescent=\"0.25\">"
      "<c r=\"A1\" cm=\"1\" t=\"str\"><f t=\"array\" ref=\"A1\">B1&amp;\"&lt;\"</f><v>x</v></c>"
      "<c r=\"B1\" ph=\"1\"><v>0.1</v><extLst><ext uri=\"{1}\"/></extLst></c></row>"
      "<row r=\"2\" collapsed='1'><c r=\"A2\"><f t=\"dataTable\" ref=\"A2\" dt2D=\"1\" dtr=\"1\" r1=\"B1\" "
      "r2=\"B2\"/><v>7</v></c>"
      "</row></sheetData>"
      "<mergeCells count=\"1\"><mergeCell ref=\"H1:I1\"/></mergeCells>"
      "<conditionalFormatting sqref=\"B1\"><cfRule type=\"cellIs\" priority=\"1\" "
      "operator=\"greaterThan\"><formula>0</formula></cfRule>"
      "</conditionalFormatting><dataValidations count=\"1\"><dataValidation sqref=\"B2\"/></dataValidations>"
      "<hyperlinks><hyperlink ref=\"A1\" location=\"B1\"/></hyperlinks><pageMargins left=\"1\" right=\"1\" top=\"1\" "
      "bottom=\"1\" "
      "header=\"0\" footer=\"0\"/><legacyDrawing r:id=\"rId1\"/>"
      "<extLst><ext uri=\"{78C0D931-6437-407d-A8EE-F0AAD7539E65}\" xmlns:x14=\"urn:x\"><x14:thing/></ext></extLst>";
  return text;
}

TEST(Writer, EverythingAroundTheCellsStaysAsItWas) {
  OpenBook book(rich());
  book.range("D5").Value(Variant(2.5));
  const std::string sheet = book.savedSheet();
  std::string expected = rich().parts().at(4).second;
  expected.replace(expected.find("A1:B2"), 5, "A1:D5");
  expected.replace(expected.find(" spans=\"1:2\""), 12, "");
  expected.replace(expected.find(" cm=\"1\" t=\"str\""), 15, " cm=\"1\" t=\"str\"");
  expected.replace(expected.find("collapsed='1'"), 13, "collapsed=\"1\"");
  expected.replace(expected.find("&lt;\"</f>"), 9, "&lt;&quot;</f>");
  expected.replace(expected.find("B1&amp;\""), 8, "B1&amp;&quot;");
  expected.replace(expected.find("</sheetData>"), 0, "<row r=\"5\"><c r=\"D5\"><v>2.5</v></c></row>");
  EXPECT_EQ(sheet, expected);
}

TEST(Writer, ASaveWithoutChangesKeepsEveryByteOfEveryPart) {
  OpenBook book(rich());
  static_cast<void>(book.host().sheets());
  const auto saved = book.saved();
  EXPECT_EQ(saved, readZip(book.path()));
}

TEST(Writer, AWorkbookThatIsCalculatedAtAKeyOnlyStaysSo) {
  BookText text = rich();
  text.workbookExtra = "<calcPr calcId=\"191029\" calcMode=\"manual\"/>";
  OpenBook book(text);
  book.range("D5").Value(Variant(2.5));
  EXPECT_NE(
      book.saved().at("xl/workbook.xml").find("<calcPr calcId=\"191029\" calcMode=\"manual\" calcCompleted=\"0\"/>"),
      std::string::npos);
}

TEST(Writer, AnyOtherWorkbookIsCalculatedWhenItIsOpened) {
  for (const char* mode : {"", " calcMode=\"auto\"", " calcMode=\"autoNoTable\""}) {
    BookText text = rich();
    text.workbookExtra = "<calcPr" + std::string(mode) + "/>";
    OpenBook book(text);
    book.range("D5").Value(Variant(2.5));
    EXPECT_NE(book.saved().at("xl/workbook.xml").find("<calcPr" + std::string(mode) + " fullCalcOnLoad=\"1\"/>"),
              std::string::npos)
        << mode;
  }
}

TEST(Writer, OtherPartsKeepTheirBytes) {
  BookText text = rich();
  text.more.emplace_back("xl/vbaProject.bin", std::string("\0\1\2macro", 8));
  text.more.emplace_back("customXml/item1.xml", "<any>thing</any>");
  text.more.emplace_back("xl/media/image1.png", std::string(5000, '\x7F'));
  text.more.emplace_back("xl/comments1.xml", "<comments/>");
  OpenBook book(text);
  book.range("D5").Value(Variant("new text"));
  const auto before = readZip(book.path());
  const auto after = book.saved();
  for (const auto& [name, content] : before) {
    if (name == "xl/worksheets/sheet1.xml" || name == "xl/workbook.xml") continue;
    ASSERT_EQ(after.count(name), 1U) << name;
    EXPECT_EQ(after.at(name), content) << name;
  }
  EXPECT_EQ(after.size(), before.size());
}

TEST(Writer, PrefixedAndStrictSheetsAreWrittenInTheirOwnForm) {
  BookText text;
  Parts parts = text.parts();
  for (auto& [name, content] : parts) {
    if (name == "xl/worksheets/sheet1.xml") {
      content =
          "<x:worksheet xmlns:x=\"http://purl.oclc.org/ooxml/spreadsheetml/main\"><x:sheetData><x:row r=\"1\">"
          "<x:c r=\"A1\"><x:v>4</x:v></x:c></x:row></x:sheetData></x:worksheet>";
    }
    if (name == "_rels/.rels" || name == "xl/_rels/workbook.xml.rels") {
      const std::string from = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
      for (std::size_t at = content.find(from); at != std::string::npos; at = content.find(from)) {
        content.replace(at, from.size(), "http://purl.oclc.org/ooxml/officeDocument/relationships");
      }
    }
  }
  OpenBook book(parts);
  EXPECT_EQ(book.value("A1"), Variant(4.0));
  book.range("B1").Value(Variant("t"));
  book.range("A1").AutoFilter();
  EXPECT_NE(book.savedSheet().find("<x:c r=\"B1\" t=\"inlineStr\"><x:is><x:t>t</x:t></x:is></x:c></x:row></x:sheetData>"
                                   "<x:autoFilter ref=\"A1:B1\"/></x:worksheet>"),
            std::string::npos)
      << book.savedSheet();
}

TEST(Writer, CellsWithoutPlacesAreReadInOrder) {
  BookText text;
  text.sheet =
      "<sheetData><row><c><v>1</v></c><c><v>2</v></c></row><row><c "
      "r=\"C2\"><v>3</v></c><c><v>4</v></c></row></sheetData>";
  OpenBook book(text);
  EXPECT_EQ(book.value("B1"), Variant(2.0));
  EXPECT_EQ(book.value("D2"), Variant(4.0));
}

TEST(Writer, SharedTextsStayInTheirTableAndNewOnesStandInTheirCells) {
  BookText text;
  text.sharedStrings = "<si><t>old</t></si>";
  text.sheet = "<sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c></row></sheetData>";
  OpenBook book(text);
  book.range("A2").Value(Variant("new"));
  const auto parts = book.saved();
  EXPECT_NE(parts.at("xl/worksheets/sheet1.xml").find("<c r=\"A1\" t=\"s\"><v>0</v></c>"), std::string::npos);
  EXPECT_NE(parts.at("xl/worksheets/sheet1.xml").find("<c r=\"A2\" t=\"inlineStr\"><is><t>new</t></is></c>"),
            std::string::npos);
  EXPECT_EQ(parts.at("xl/sharedStrings.xml"), readZip(book.path()).at("xl/sharedStrings.xml"));
}

TEST(Writer, ASaveThatFailsLeavesTheTargetAlone) {
  const TemporaryFolder folder;
  OpenBook book(rich());
  book.range("D5").Value(Variant(1.0));
  std::filesystem::create_directory(folder / "target.xlsx");
  int number = 0;
  failureOf([&] { book.host().save(folder / "target.xlsx"); }, &number);
  EXPECT_EQ(number, 75);
  failureOf([&] { book.host().save(folder / "none" / "target.xlsx"); }, &number);
  EXPECT_EQ(number, 75);
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder / "")) {
    static_cast<void>(entry);
    ++files;
  }
  EXPECT_EQ(files, 1) << "nothing is left beside the target";
}

TEST(Writer, TheFileThatWasOpenedMayBeReplacedAndSavedAgain) {
  OpenBook book(rich());
  book.range("D5").Value(Variant(1.0));
  book.host().save(book.path());
  book.range("D6").Value(Variant(2.0));
  book.host().save(book.path());
  const auto host = WorkbookHost::open(book.path());
  EXPECT_EQ(host->cellValue("Data", {5, 4}), Variant(1.0));
  EXPECT_EQ(host->cellValue("Data", {6, 4}), Variant(2.0));
}

TEST(Writer, ASymbolicLinkGoesOnPointingAtTheFile) {
  const TemporaryFolder folder;
  OpenBook book(rich());
  book.host().save(folder / "real.xlsx");
  std::filesystem::permissions(folder / "real.xlsx",
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  std::filesystem::create_symlink(folder / "real.xlsx", folder / "link.xlsx");
  book.range("D5").Value(Variant(1.0));
  book.host().save(folder / "link.xlsx");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.xlsx"));
  EXPECT_EQ(WorkbookHost::open(folder / "real.xlsx")->cellValue("Data", {5, 4}), Variant(1.0));
  EXPECT_EQ(std::filesystem::status(folder / "real.xlsx").permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

}  // namespace
}  // namespace mervane::workbook::tests
