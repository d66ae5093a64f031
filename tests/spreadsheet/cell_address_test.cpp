#include "spreadsheet/cell_address.h"

#include <gtest/gtest.h>

namespace mervane::sheet {
namespace {

TEST(CellAddress, ColumnsHaveLetters) {
  EXPECT_EQ(columnLetters(1), "A");
  EXPECT_EQ(columnLetters(26), "Z");
  EXPECT_EQ(columnLetters(27), "AA");
  EXPECT_EQ(columnLetters(702), "ZZ");
  EXPECT_EQ(columnLetters(703), "AAA");
  EXPECT_EQ(columnLetters(lastSheetColumn), "XFD");
}

TEST(CellAddress, ReadsWhatItPrints) {
  for (std::int32_t column = 1; column <= lastSheetColumn; ++column) {
    ASSERT_EQ(parseCell(a1(CellAddress{7, column})), (CellAddress{7, column}));
  }
}

TEST(CellAddress, RefusesCellsOffTheSheetAndOtherTexts) {
  for (const char* text :
       {"", "A", "1", "A0", "A1048577", "XFE1", "AAAA1", "A1B", "A1:", "A-1", "1A", "A 1", "A99999999999"}) {
    EXPECT_EQ(parseCell(text), std::nullopt) << text;
  }
}

TEST(CellAddress, ReadsAreasInAnyOrderOfCorners) {
  EXPECT_EQ(parseArea("$C$9:b7"), (CellArea{7, 2, 9, 3}));
  EXPECT_EQ(parseArea("B:C"), (CellArea{1, 2, lastSheetRow, 3}));
  EXPECT_EQ(parseArea("5:2"), (CellArea{2, 1, 5, lastSheetColumn}));
  EXPECT_EQ(parseArea("A1:B"), std::nullopt);
  EXPECT_EQ(parseArea("A1:B2:C3"), std::nullopt);
}

TEST(CellAddress, ReadsSheetParts) {
  EXPECT_EQ(parseReference("Sheet1!B2")->sheet, "Sheet1");
  EXPECT_EQ(parseReference("'It''s'!B2")->sheet, "It's");
  EXPECT_EQ(parseReference("a!b!B2")->sheet, "a!b");
  EXPECT_FALSE(parseReference("B2")->hasSheet);
  EXPECT_FALSE(parseReference("!B2"));
  EXPECT_FALSE(parseReference("''!B2"));
}

TEST(CellAddress, QuotesSheetNamesThatNeedIt) {
  EXPECT_EQ(quotedSheetName("Sheet1x"), "Sheet1x");
  EXPECT_EQ(quotedSheetName("Sheet1"), "Sheet1");
  EXPECT_EQ(quotedSheetName("Данные"), "Данные");
  for (const char* name : {"My Sheet", "A1", "R1C1", "r2", "C", "RC", "1st", "a-b", "TRUE", ""}) {
    EXPECT_EQ(quotedSheetName(name), "'" + std::string(name) + "'");
  }
  EXPECT_EQ(quotedSheetName("It's"), "'It''s'");
  EXPECT_EQ(absoluteA1("My Sheet", CellArea{2, 1, 3, 2}), "'My Sheet'!$A$2:$B$3");
}

}  // namespace
}  // namespace mervane::sheet
