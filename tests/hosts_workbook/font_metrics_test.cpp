#include "hosts/workbook/font_metrics.h"

#include <gtest/gtest.h>

#include <string>

namespace mervane::workbook::tests {
namespace {

double width(std::string_view text) {
  return textWidth(text, "Calibri", 11.0, false);
}

TEST(FontMetrics, TheDigitOfTheUsualFontIsSevenPixelsWide) {
  EXPECT_EQ(digitWidth("Calibri", 11.0), 7);
  EXPECT_EQ(digitWidth("Arial", 10.0), 7);
  EXPECT_EQ(digitWidth("Courier New", 10.0), 8);
  EXPECT_GT(digitWidth("a font that nobody knows", 11.0), 0);
}

TEST(FontMetrics, ADigitIsAtLeastOnePixelWide) {
  EXPECT_EQ(digitWidth("Calibri", 0.0), 1);
  EXPECT_EQ(digitWidth("Calibri", 1.0), 1);
}

TEST(FontMetrics, DigitsAreAllAlike) {
  for (char digit = '1'; digit <= '9'; ++digit) EXPECT_EQ(width(std::string(1, digit)), width("0")) << digit;
  EXPECT_DOUBLE_EQ(width("0123456789"), 10.0 * width("0"));
}

TEST(FontMetrics, LettersHaveWidthsOfTheirOwn) {
  EXPECT_LT(width("i"), width("0"));
  EXPECT_LT(width("i"), width("m"));
  EXPECT_GT(width("W"), width("0"));
  EXPECT_DOUBLE_EQ(width("im"), width("i") + width("m"));
}

TEST(FontMetrics, BoldAndLargerTextsAreWider) {
  EXPECT_GT(textWidth("Clusters", "Calibri", 11.0, true), width("Clusters"));
  EXPECT_DOUBLE_EQ(textWidth("Clusters", "Calibri", 22.0, false), 2.0 * width("Clusters"));
  EXPECT_GT(textWidth("Clusters", "Verdana", 11.0, false), width("Clusters"));
}

TEST(FontMetrics, TheWidestLineOfATextCounts) {
  EXPECT_EQ(width("a\nlonger\nb"), width("longer"));
  EXPECT_EQ(width("longer\n"), width("longer"));
  EXPECT_EQ(width(""), 0.0);
}

TEST(FontMetrics, OtherScriptsHaveAnEstimate) {
  EXPECT_NEAR(width("\xC3\xA9"), width("0"), width("0") * 0.2);   // an accented letter
  EXPECT_DOUBLE_EQ(width("\xE8\xA1\xA8"), 2.0 * width("0"));      // an ideograph
  EXPECT_DOUBLE_EQ(width("\xF0\x9F\x98\x80"), 2.0 * width("0"));  // a picture
  EXPECT_GT(width("\xE0\xB8\x81"), width("0"));                   // a letter of South-East Asia
  EXPECT_DOUBLE_EQ(width("\x01"), 0.0);                           // a control character
}

TEST(FontMetrics, ATextThatIsCutOffInALetterIsMeasuredAllTheSame) {
  EXPECT_GT(width("a\xE8"), width("a"));
  EXPECT_GT(width("a\xF0\x9F"), width("a"));
}

}  // namespace
}  // namespace mervane::workbook::tests
