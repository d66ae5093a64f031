#include "mervane/utf16.h"

#include <gtest/gtest.h>

namespace mervane {
namespace {

std::string utf8(char32_t point) {
  std::string text = "<";
  appendUtf8(text, point);
  return text;
}

TEST(Utf8, EachLengthBeginsWhereTheShorterOneEnds) {
  EXPECT_EQ(utf8(0x7F), "<\x7F");
  EXPECT_EQ(utf8(0x80), "<\xC2\x80");
  EXPECT_EQ(utf8(0x7FF), "<\xDF\xBF");
  EXPECT_EQ(utf8(0x800), "<\xE0\xA0\x80");
  EXPECT_EQ(utf8(0xFFFF), "<\xEF\xBF\xBF");
  EXPECT_EQ(utf8(0x10000), "<\xF0\x90\x80\x80");
  EXPECT_EQ(utf8(0x10FFFF), "<\xF4\x8F\xBF\xBF");
}

TEST(Utf16, TextsComeBackAsTheyWere) {
  const std::string text = "a\xC5\xBD\xE2\x82\xAC\xF0\x9F\x93\x88";
  EXPECT_EQ(toUtf16(text).size(), 5U);
  EXPECT_EQ(toUtf8(toUtf16(text)), text);
}

TEST(Utf16, WhatIsMalformedBecomesTheReplacementCharacter) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(toUtf8(std::u16string(1, char16_t{0xD800})), replacement);
  EXPECT_EQ(toUtf8(toUtf16("\xED\xA0\x80")).substr(0, 3), replacement);
}

}  // namespace
}  // namespace mervane
