// Books that break a rule of the format which no reader insists on.

#include <gtest/gtest.h>

#include <algorithm>

#include "fixture.h"
#include "hosts/workbook/package.h"
#include "mervane/utf16.h"

namespace mervane::workbook::tests {
namespace {

constexpr const char* relationsType = "application/vnd.openxmlformats-package.relationships+xml";

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

BookText plainBook() {
  BookText text;
  text.sharedStrings = "<si><t>Größe</t></si><si><t>\U0001F600 two</t></si>";
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"s\"><v>1</v></c></row>"
      "<row r=\"2\"><c r=\"A2\"><v>1.5</v></c><c r=\"B2\" t=\"inlineStr\"><is><t>\u00E4</t></is></c></row></sheetData>";
  return text;
}

enum class Order { little, big };

std::string wide(const std::string& text, Order order, bool marked) {
  std::string bytes;
  for (const char16_t unit : (marked ? u"\uFEFF" : u"") + toUtf16(text)) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += order == Order::little ? low : high;
    bytes += order == Order::little ? high : low;
  }
  return bytes;
}

Parts inUtf16(Parts parts, Order order, bool marked) {
  for (auto& [name, content] : parts) {
    replaceAll(content, "encoding=\"UTF-8\"", "encoding=\"UTF-16\"");
    content = wide(content, order, marked);
  }
  return parts;
}

TEST(OddBook, PartsInUtf16AreRead) {
  for (const Order order : {Order::little, Order::big}) {
    for (const bool marked : {true, false}) {
      OpenBook book(inUtf16(plainBook().parts(), order, marked));
      EXPECT_EQ(book.text("A1"), "Größe");
      EXPECT_EQ(book.text("B1"), "\U0001F600 two");
      EXPECT_EQ(book.text("B2"), "\u00E4");
      EXPECT_EQ(book.value("A2"), Variant(1.5));
    }
  }
}

TEST(OddBook, ASheetInUtf16IsWrittenInUtf8) {
  OpenBook book(inUtf16(plainBook().parts(), Order::little, true));
  book.range("A2").Value(Variant(7.0));
  const std::string sheet = book.savedSheet();
  EXPECT_TRUE(sheet.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>")) << sheet;
  EXPECT_NE(sheet.find("<v>7</v>"), std::string::npos);
  book.reopen();
  EXPECT_EQ(book.text("A1"), "Größe");
  EXPECT_EQ(book.text("B2"), "\u00E4");
}

TEST(OddBook, ALongSheetInUtf16LosesNoCharacterBetweenTwoPieces) {
  // Pairs of surrogates and an odd number of units in front of them, so that pieces end inside of a character.
  std::string text;
  for (int i = 0; i < 200'000; ++i) text += "\U0001F600";
  for (const std::string& start : {std::string(), std::string("x")}) {
    BookText made;
    made.sharedStrings = "<si><t>" + start + text + "</t></si>";
    made.sheet = "<sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c></row></sheetData>";
    OpenBook book(inUtf16(made.parts(), Order::big, true));
    EXPECT_EQ(book.text("A1"), start + text);
  }
}

TEST(OddBook, BrokenUtf16IsRefused) {
  const auto refusal = [](const std::string& sheet) {
    Parts parts = BookText().parts();
    for (auto& [name, content] : parts) {
      if (name == "xl/worksheets/sheet1.xml") content = sheet;
    }
    OpenBook book(parts);
    return failureOf([&] { static_cast<void>(book.host().sheets()); });
  };
  const std::string begin = "<worksheet><sheetData><row r=\"1\"><c r=\"A1\" t=\"str\"><v>";
  const std::string end = "</v></c></row></sheetData></worksheet>";
  const std::string half("\x00\xD8", 2);
  EXPECT_NE(refusal(wide(begin, Order::little, true) + half + wide(end, Order::little, false)).find("not allowed"),
            std::string::npos);
  EXPECT_NE(refusal(wide(begin + end, Order::little, true) + "x").find("no well-formed XML"), std::string::npos);
}

TEST(OddBook, EncodingsThatUtf8HoldsAreTaken) {
  for (const char* encoding : {"utf8", "Utf-8", "US-ASCII"}) {
    Parts parts = BookText().parts();
    for (auto& [name, content] : parts) replaceAll(content, "UTF-8", encoding);
    OpenBook book(parts);
    EXPECT_EQ(book.host().sheets().size(), 1U) << encoding;
  }
}

TEST(OddBook, AnEmptyValueIsNoValue) {
  BookText text;
  text.sharedStrings = "<si><t>first</t></si>";
  text.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v/></c><c r=\"B1\" t=\"b\"><v></v></c><c r=\"C1\" t=\"e\"><v/></c>"
      "<c r=\"D1\" t=\"d\"><v/></c><c r=\"E1\"><v/></c><c r=\"F1\" t=\"str\"><v/></c></row></sheetData>";
  OpenBook book(text);
  for (const char* cell : {"A1", "B1", "C1", "D1", "E1"}) EXPECT_EQ(book.value(cell), Variant()) << cell;
  EXPECT_EQ(book.text("F1"), "");
}

TEST(OddBook, AnEmptyFormatIsThePlainOne) {
  BookText text;
  text.sheet =
      "<cols><col min=\"1\" max=\"1\" width=\"9\" style=\"\"/></cols>"
      "<sheetData><row r=\"1\" s=\"\" ht=\"\"><c r=\"A1\" s=\"\" t=\"\"><v>5</v></c></row></sheetData>";
  OpenBook book(text);
  EXPECT_EQ(book.value("A1"), Variant(5.0));
  book.range("B1").Value(Variant(6.0));
  const std::string sheet = book.savedSheet();
  EXPECT_EQ(sheet.find("=\"\"", sheet.find("<sheetData")), std::string::npos) << sheet;
}

TEST(OddBook, AMissingPartOfFormatsIsMade) {
  BookText text = plainBook();
  text.workbookRelations =
      "<Relationship Id=\"rId8\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles\" "
      "Target=\"formats.xml\"/>";
  OpenBook book(text);
  EXPECT_EQ(book.text("A1"), "Größe");
  EXPECT_FALSE(book.saved().contains("xl/formats.xml"));
  book.range("A2").Interior().ColorIndex(3);
  const auto saved = book.saved();
  EXPECT_TRUE(saved.contains("xl/formats.xml"));
  EXPECT_NE(saved.at("[Content_Types].xml").find("/xl/formats.xml"), std::string::npos);
}

TEST(OddBook, NamesOfPartsAreFoundInEveryCase) {
  Parts parts = plainBook().parts();
  for (auto& [name, content] : parts) {
    if (name == "[Content_Types].xml") name = "[content_types].xml";
    if (name == "_rels/.rels") name = "_RELS/.Rels";
  }
  OpenBook book(parts);
  EXPECT_EQ(book.text("A1"), "Größe");
  book.range("A2").Interior().ColorIndex(3);  // needs a part of formats, and its content type
  const auto saved = book.saved();
  EXPECT_FALSE(saved.contains("[Content_Types].xml"));
  EXPECT_NE(saved.at("[content_types].xml").find("/xl/styles.xml"), std::string::npos);
}

TEST(OddBook, BackslashesInNamesSeparateFolders) {
  Parts parts = plainBook().parts();
  for (auto& [name, content] : parts) {
    if (name == "[Content_Types].xml") {
      replaceAll(content, "/xl/worksheets/", "\\xl\\worksheets\\");
      replaceAll(content, "/xl/workbook", "\\xl\\workbook");
    } else if (name.ends_with(".rels")) {
      replaceAll(content, "Target=\"xl/", "Target=\"\\xl\\");
      replaceAll(content, "worksheets/", "worksheets\\");
    }
    std::replace(name.begin(), name.end(), '/', '\\');
  }
  OpenBook book(parts);
  EXPECT_EQ(book.text("A1"), "Größe");
  book.range("A2").Value(Variant(7.0));
  const auto saved = book.saved();
  EXPECT_NE(saved.at("xl\\worksheets\\sheet1.xml").find("<v>7</v>"), std::string::npos);
  EXPECT_FALSE(saved.contains("xl/worksheets/sheet1.xml"));
  const auto package = Package::open(book.path());
  EXPECT_EQ(package->contentType("xl/worksheets/sheet1.xml"),
            "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml");
}

/// A book whose tables of relations have a content type each, and none for others to come.
Parts withTypesOfSingleRelations() {
  Parts parts = plainBook().parts();
  std::string& types = parts.front().second;
  replaceAll(types, "<Default Extension=\"rels\" ContentType=\"" + std::string(relationsType) + "\"/>",
             "<Override PartName=\"/_rels/.rels\" ContentType=\"" + std::string(relationsType) +
                 "\"/><Override PartName=\"/xl/_rels/workbook.xml.rels\" ContentType=\"" + relationsType + "\"/>");
  return parts;
}

TEST(OddBook, NewTablesOfRelationsGetAContentType) {
  const TemporaryFolder folder;
  writeZip(folder / "book.xlsx", withTypesOfSingleRelations());
  const auto package = Package::open(folder / "book.xlsx");
  static_cast<void>(package->addRelation("xl/worksheets/sheet1.xml", "drawing", "xl/drawings/drawing1.xml"));
  package->save(folder / "saved.xlsx");
  const auto again = Package::open(folder / "saved.xlsx");
  EXPECT_EQ(again->contentType("xl/worksheets/_rels/sheet1.xml.rels"), relationsType);
  EXPECT_EQ(again->contentType("xl/_rels/workbook.xml.rels"), relationsType);
}

TEST(OddBook, TablesOfRelationsThatHaveATypeGetNoSecondOne) {
  const TemporaryFolder folder;
  writeZip(folder / "book.xlsx", withTypesOfSingleRelations());
  const auto package = Package::open(folder / "book.xlsx");
  static_cast<void>(package->addRelation("xl/workbook.xml", "theme", "xl/theme/theme1.xml"));
  const std::string before = readZip(folder / "book.xlsx").at("[Content_Types].xml");
  package->save(folder / "saved.xlsx");
  EXPECT_EQ(readZip(folder / "saved.xlsx").at("[Content_Types].xml"), before);
}

TEST(OddBook, ATableOfRelationsThatGoesTakesItsContentTypeAlong) {
  const TemporaryFolder folder;
  writeZip(folder / "book.xlsx", withTypesOfSingleRelations());
  for (const bool wholePart : {true, false}) {
    const auto package = Package::open(folder / "book.xlsx");
    if (wholePart) {
      package->remove("xl/workbook.xml");
    } else {
      for (const Relation& relation : package->relations("xl/workbook.xml")) {
        package->removeRelation("xl/workbook.xml", relation.id);
      }
    }
    package->save(folder / "saved.xlsx");
    const auto saved = readZip(folder / "saved.xlsx");
    EXPECT_FALSE(saved.contains("xl/_rels/workbook.xml.rels"));
    EXPECT_EQ(saved.at("[Content_Types].xml").find("workbook.xml.rels"), std::string::npos);
  }
}

}  // namespace
}  // namespace mervane::workbook::tests
