#include "mervane/letter_case.h"

#include <gtest/gtest.h>

namespace mervane {

namespace {

TEST(LetterCase, NamesOfAnyScriptLoseTheirCapitals) {
  EXPECT_EQ(lowered("Sheet1 AZ az [\\]"), "sheet1 az az [\\]");
  EXPECT_EQ(lowered("ÀÖØÞß÷×Ÿ"), "àöøþß÷×ÿ");
  EXPECT_EQ(lowered("ĀāŁłŽ"), "āāłłž");
  EXPECT_EQ(lowered("ΑΩΆ ДАННЫЕ Ѐ Ԁ"), "αωά данные ѐ ԁ");
  EXPECT_EQ(lowered("Ａ Ⴀ Ⅷ Ⓐ"), "ａ ⴀ ⅷ ⓐ");
  EXPECT_EQ(lowered("𐐀"), "𐐨");
}

TEST(LetterCase, TextsWithoutCapitalsStay) {
  EXPECT_EQ(lowered(""), "");
  EXPECT_EQ(lowered("データ 数据 😀"), "データ 数据 😀");
}

TEST(LetterCase, BytesThatAreNoTextStay) {
  EXPECT_EQ(lowered("A\xFF\xC3"
                    "B\x80\xE2\x82"),
            "a\xFF\xC3"
            "b\x80\xE2\x82");
}

}  // namespace

}  // namespace mervane
