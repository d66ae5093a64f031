#include "cli/text_display.h"

#include <gtest/gtest.h>

namespace mervane::cli {
namespace {

TEST(Printable, ShowsControlCharactersInsteadOfObeyingThem) {
  EXPECT_EQ(printable("a\x1b[31mb"), "a␛[31mb");
  EXPECT_EQ(printable("a\r\n\tb"), "a␍␊␉b");
  EXPECT_EQ(printable("\x7f\xc2\x9b"
                      "x"),
            "\uFFFD\uFFFDx");
  EXPECT_EQ(printable("\u202Eabc"), "\uFFFDabc");
}

TEST(Printable, LeavesTextAsItIs) {
  EXPECT_EQ(printable("Größe 漢字 🙂"), "Größe 漢字 🙂");
}

TEST(Printable, ReplacesBytesThatAreNoUtf8) {
  EXPECT_EQ(printable("gr\xfc\xdf"
                      "e"),
            "gr\uFFFD\uFFFDe");
  EXPECT_EQ(printable("\xed\xa0\x80"), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(printable("\xc0\xaf"), "\uFFFD\uFFFD");
}

TEST(Quoted, CutsALongText) {
  EXPECT_EQ(cli::quoted("x"), "\"x\"");
  EXPECT_EQ(cli::quoted(std::string(40, 'x')), "\"" + std::string(40, 'x') + "\"");
  EXPECT_EQ(cli::quoted(std::string(41, 'x')), "\"" + std::string(40, 'x') + "…\"");
}

TEST(NameForMessage, QuotesWhatIsNoPlainWord) {
  EXPECT_EQ(nameForMessage("petal_width.2"), "petal_width.2");
  EXPECT_EQ(nameForMessage("petal width"), "\"petal width\"");
  EXPECT_EQ(nameForMessage(""), "\"\"");
}

TEST(DisplayWidth, CountsTheCellsOfATerminal) {
  EXPECT_EQ(displayWidth("abc"), 3U);
  EXPECT_EQ(displayWidth("äöü"), 3U);
  EXPECT_EQ(displayWidth("漢字"), 4U);
  EXPECT_EQ(displayWidth("e\u0301"), 1U);
}

TEST(CutToWidth, EndsACutTextWithAnEllipsis) {
  EXPECT_EQ(cutToWidth("abcdef", 6), "abcdef");
  EXPECT_EQ(cutToWidth("abcdef", 4), "abc…");
  EXPECT_EQ(cutToWidth("漢字漢", 4), "漢…");
  EXPECT_EQ(cutToWidth("abc", 0), "");
}

TEST(IsUtf8, AcceptsWellFormedTextAlone) {
  EXPECT_TRUE(isUtf8("Größe 🙂"));
  EXPECT_FALSE(isUtf8("\xfc"));
  EXPECT_FALSE(isUtf8("\xe2\x82"));
  EXPECT_FALSE(isUtf8("\xf4\x90\x80\x80"));
}

TEST(Grouped, SetsBlanksBetweenGroupsOfThree) {
  EXPECT_EQ(grouped(0), "0");
  EXPECT_EQ(grouped(999), "999");
  EXPECT_EQ(grouped(1000), "1 000");
  EXPECT_EQ(grouped(-1234567), "-1 234 567");
  EXPECT_EQ(counted(1, "row", "rows"), "1 row");
  EXPECT_EQ(counted(2000, "row", "rows"), "2 000 rows");
}

}  // namespace
}  // namespace mervane::cli
