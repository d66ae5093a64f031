#include <gtest/gtest.h>

#include <fstream>

#include "fixture.h"
#include "hosts/workbook/package.h"
#include "mervane/runtime_errors.h"

namespace mervane::workbook::tests {
namespace {

std::string openFailure(const std::filesystem::path& path, int* number = nullptr) {
  return failureOf(
      [&] {
        const auto host = WorkbookHost::open(path);
        for (const auto& sheet : host->sheets()) static_cast<void>(sheet);
      },
      number);
}

std::string bytesFailure(const std::string& bytes) {
  const TemporaryFolder folder;
  std::ofstream(folder / "book.xlsx", std::ios::binary) << bytes;
  return openFailure(folder / "book.xlsx");
}

std::string partsFailure(const Parts& parts) {
  const TemporaryFolder folder;
  writeZip(folder / "book.xlsx", parts);
  return openFailure(folder / "book.xlsx");
}

std::string sheetFailure(const std::string& children) {
  BookText text;
  text.sheet = children;
  return partsFailure(text.parts());
}

std::string wide(const std::string& name) {
  std::string result;
  for (const char c : name) result += std::string{c, '\0'};
  return result;
}

const std::string compound = std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) + std::string(600, '\0');

bool says(const std::string& text, const std::string& what) {
  return text.find(what) != std::string::npos;
}

TEST(HostileFile, AMissingFileAndAFolderAreNamed) {
  const TemporaryFolder folder;
  int number = 0;
  EXPECT_TRUE(says(openFailure(folder / "none.xlsx", &number), "none.xlsx\" does not exist"));
  EXPECT_EQ(number, runtime::fileNotFound.number);
  EXPECT_TRUE(says(openFailure(folder / ""), "is a folder"));
}

TEST(HostileFile, OtherKindsOfFileAreRecognised) {
  EXPECT_TRUE(says(bytesFailure(""), "empty"));
  EXPECT_TRUE(says(bytesFailure("a,b\n1,2\n"), "no workbook"));
  EXPECT_TRUE(says(bytesFailure("<html></html>"), "XML or HTML"));
  EXPECT_TRUE(says(bytesFailure(compound + wide("EncryptedPackage")), "encrypted"));
  EXPECT_TRUE(says(bytesFailure(compound + wide("Workbook")), ".xls"));
  EXPECT_TRUE(says(bytesFailure(compound), "compound"));
  EXPECT_TRUE(says(partsFailure({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}}), ".ods"));
  EXPECT_TRUE(says(partsFailure({{"xl/workbook.bin", "x"}, {"[Content_Types].xml", "<Types/>"}}), ".xlsb"));
  EXPECT_TRUE(says(partsFailure({{"a.txt", "x"}}), "no workbook"));
}

TEST(HostileFile, EveryTruncationIsRefused) {
  const TemporaryFolder folder;
  BookText text;
  text.sheet = "<sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c></row></sheetData>";
  writeZip(folder / "book.xlsx", text.parts());
  std::ifstream file(folder / "book.xlsx", std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), {});
  for (std::size_t length = 0; length < bytes.size(); length += 7) {
    EXPECT_NE(bytesFailure(bytes.substr(0, length)), "") << length;
  }
}

TEST(HostileFile, AFlippedByteIsRefusedOrHarmless) {
  const TemporaryFolder folder;
  BookText text;
  text.sheet = "<sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c></row></sheetData>";
  writeZip(folder / "book.xlsx", text.parts());
  std::ifstream file(folder / "book.xlsx", std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), {});
  int refused = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    std::string changed = bytes;
    changed[at] = static_cast<char>(changed[at] ^ 0x20);
    std::ofstream(folder / "changed.xlsx", std::ios::binary) << changed;
    try {
      const auto host = WorkbookHost::open(folder / "changed.xlsx");
      static_cast<void>(host->sheets());
    } catch (const Failure&) {
      ++refused;
    }
  }
  EXPECT_GT(refused, static_cast<int>(bytes.size() / 2));
}

TEST(HostileFile, LimitsOfThePackageHold) {
  const TemporaryFolder folder;
  BookText text;
  text.more.emplace_back("bomb.xml", std::string(70'000'000, 'x'));
  writeZip(folder / "book.xlsx", text.parts());
  EXPECT_TRUE(says(openFailure(folder / "book.xlsx"), "times its size"));
  const auto refused = [&](PackageLimits limits) {
    limits.ratio = 100000;
    return failureOf([&] { static_cast<void>(Package::open(folder / "book.xlsx", limits)); });
  };
  PackageLimits few;
  few.entries = 3;
  EXPECT_TRUE(says(refused(few), "parts"));
  PackageLimits small;
  small.entrySize = 1000;
  EXPECT_TRUE(says(refused(small), "bomb.xml"));
  PackageLimits total;
  total.totalSize = 1'000'000;
  EXPECT_TRUE(says(refused(total), "unpack to more than"));
}

TEST(HostileFile, EntitiesAndDocumentTypesAreRefused) {
  const std::string trick = "<!DOCTYPE x [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]>";
  BookText text;
  for (const char* part : {"xl/workbook.xml", "xl/worksheets/sheet1.xml", "[Content_Types].xml"}) {
    Parts parts = text.parts();
    for (auto& [name, content] : parts) {
      if (name == part) content.insert(content.find("?>") + 2, trick);
    }
    EXPECT_TRUE(says(partsFailure(parts), "document type")) << part;
  }
  EXPECT_TRUE(
      says(sheetFailure("<sheetData><row r=\"1\"><c r=\"A1\" t=\"str\"><v>&b;</v></c></row></sheetData>"), "entity"));
}

TEST(HostileFile, BrokenSheetsAreRefusedWithTheirPlace) {
  const auto cell = [](const std::string& content) {
    return sheetFailure("<sheetData><row r=\"3\">" + content + "</row></sheetData>");
  };
  EXPECT_TRUE(says(cell("<c r=\"B3\"><v>abc</v></c>"), "near B3: the value is no number"));
  EXPECT_TRUE(says(cell("<c r=\"B3\"><v>1e999</v></c>"), "near B3"));
  EXPECT_TRUE(says(cell("<c r=\"B4\"><v>1</v></c>"), "says that it is \"B4\""));
  EXPECT_TRUE(says(cell("<c r=\"B3\" t=\"s\"><v>0</v></c>"), "the text does not exist"));
  EXPECT_TRUE(says(cell("<c r=\"B3\" t=\"q\"><v>0</v></c>"), "cell type"));
  EXPECT_TRUE(says(cell("<c r=\"B3\" s=\"9\"><v>0</v></c>"), "cell format"));
  EXPECT_TRUE(says(sheetFailure("<cols><col min=\"2\" max=\"3\" style=\"9\"/></cols><sheetData/>"),
                   "near column B: the cell format \"9\" does not exist"));
  EXPECT_TRUE(says(cell("<c r=\"XFE3\"><v>0</v></c>"), "XFE3"));
  EXPECT_TRUE(says(cell("<c r=\"B3\"/><c r=\"B3\"/>"), "twice"));
  EXPECT_TRUE(says(sheetFailure("<sheetData><row r=\"0\"/></sheetData>"), "row \"0\""));
  EXPECT_TRUE(says(sheetFailure("<sheetData><row r=\"1048577\"/></sheetData>"), "1048577"));
  EXPECT_TRUE(says(sheetFailure("<sheetData><row r=\"2\"/><row r=\"1\"/></sheetData>"), "ascending"));
  EXPECT_TRUE(says(sheetFailure("<sheetData><row r=\"1\"></sheetData>"), "does not match"));
  EXPECT_TRUE(says(sheetFailure("<sheetData/><sheetData/>"), "two tables"));
  EXPECT_TRUE(says(sheetFailure("<a b=c/>"), "no quotes"));
  EXPECT_TRUE(says(sheetFailure("<a><d b></d></a>"), "no value"));
}

TEST(HostileFile, DeepNestingIsRefused) {
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "<a>";
  EXPECT_TRUE(says(sheetFailure(deep), "nested too deeply"));
}

TEST(HostileFile, AWorkbookWithoutSheetsOrPartsSaysSo) {
  BookText text;
  Parts parts = text.parts();
  std::erase_if(parts, [](const auto& part) { return part.first == "xl/worksheets/sheet1.xml"; });
  EXPECT_TRUE(says(partsFailure(parts), "no worksheet"));
  parts = text.parts();
  std::erase_if(parts, [](const auto& part) { return part.first == "xl/workbook.xml"; });
  EXPECT_TRUE(says(partsFailure(parts), "lacks its part \"xl/workbook.xml\""));
  parts = text.parts();
  std::erase_if(parts, [](const auto& part) { return part.first == "_rels/.rels"; });
  EXPECT_NE(partsFailure(parts), "");
}

TEST(HostileFile, TwoSheetsOnOnePartAreRefusedSinceOneWouldOverwriteTheOther) {
  Parts parts = BookText().parts();
  for (auto& [name, content] : parts) {
    if (name != "xl/workbook.xml") continue;
    content.insert(content.find("</sheets>"), "<sheet name=\"Copy\" sheetId=\"2\" r:id=\"rId1\"/>");
  }
  EXPECT_TRUE(says(partsFailure(parts), "its sheets \"Data\" and \"Copy\" are the same part"));
}

TEST(HostileFile, PartsWithOneNameInTwoCasesAreRefused) {
  BookText text;
  text.more.emplace_back("XL/Workbook.xml", "<x/>");
  EXPECT_TRUE(says(partsFailure(text.parts()), "twice"));
}

}  // namespace
}  // namespace mervane::workbook::tests
