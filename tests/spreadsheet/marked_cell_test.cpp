#include "spreadsheet/marked_cell.h"

#include <gtest/gtest.h>

namespace mervane::sheet {
namespace {

TEST(MarkedCell, IsTakenOffTheBeginWithItsMarks) {
  std::string_view text = "$ab12:C3";
  MarkedCell cell;
  ASSERT_TRUE(takeMarkedCell(text, cell));
  EXPECT_TRUE(cell.fixedColumn);
  EXPECT_FALSE(cell.fixedRow);
  EXPECT_EQ(cell.column, 28);
  EXPECT_EQ(cell.row, 12);
  EXPECT_EQ(text, ":C3");
}

TEST(MarkedCell, WhatIsNoCellStaysAsItIs) {
  for (const std::string_view whole : {"", "$", "A", "$A", "12", "$A$", "A0", "XFE1", "A1048577", "é1"}) {
    std::string_view text = whole;
    MarkedCell cell{true, true, 7, 8};
    EXPECT_FALSE(takeMarkedCell(text, cell)) << whole;
    EXPECT_EQ(text, whole);
    EXPECT_EQ(cell.row, 8);
  }
}

}  // namespace
}  // namespace mervane::sheet
