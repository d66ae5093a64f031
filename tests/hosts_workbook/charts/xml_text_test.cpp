#include "hosts/workbook/charts/xml_text.h"

#include <gtest/gtest.h>

#include "tests/hosts_workbook/charts/invoke.h"

namespace mervane::tests {
namespace {

using workbook::charts::ElementOutline;
using workbook::charts::outlineOf;
using workbook::charts::printable;

std::vector<std::string> childTexts(const std::string& text) {
  std::vector<std::string> texts;
  for (const auto& span : outlineOf(text).children) texts.push_back(text.substr(span.begin, span.end - span.begin));
  return texts;
}

TEST(ElementOutline, GivesTheTextOfEachChild) {
  const std::string text = "<?xml version=\"1.0\"?>\n<d xmlns=\"u\"> <a/>\n<b x='1'><a>t</a></b><c></c> </d>\n";
  EXPECT_EQ(childTexts(text), (std::vector<std::string>{"<a/>", "<b x='1'><a>t</a></b>", "<c></c>"}));
}

TEST(ElementOutline, IsNotMisledByMarkupInsideCommentsDataAndQuotes) {
  const std::string text =
      "<!-- <x> --><d><!-- </d> --><a t=\"/>\" u='</a>'><![CDATA[</a></d>]]></a><?p </d> ?><b y=\"<\"/></d>";
  EXPECT_EQ(childTexts(text),
            (std::vector<std::string>{"<a t=\"/>\" u='</a>'><![CDATA[</a></d>]]></a>", "<b y=\"<\"/>"}));
}

TEST(ElementOutline, TellsWhereTheContentBeginsAndEnds) {
  const std::string text = "<d a='1'>mid</d >tail";
  const ElementOutline outline = outlineOf(text);
  EXPECT_EQ(outline.name, "d");
  EXPECT_EQ(text.substr(outline.tagEnd, outline.contentEnd - outline.tagEnd), "mid");
  EXPECT_EQ(text.substr(outline.end), "tail");
  EXPECT_TRUE(outline.hasEndTag);
}

TEST(ElementOutline, KnowsAnElementWithoutContent) {
  const ElementOutline outline = outlineOf("<d a='1' />");
  EXPECT_FALSE(outline.hasEndTag);
  EXPECT_TRUE(outline.children.empty());
}

TEST(ElementOutline, RefusesTextsThatEndTooSoon) {
  for (const char* text : {"", "<d", "<d><a></a>", "<d><!-- ", "<d><a x='></a></d>"}) {
    EXPECT_EQ(numberRaisedBy([&] { (void)outlineOf(text); }), refused) << text;
  }
}

TEST(Printable, DropsWhatAnXmlDocumentCannotHold) {
  EXPECT_EQ(printable(std::string("a\x01"
                                  "b\tc\nd\x1f",
                                  7)),
            "ab\tc\nd");
  EXPECT_EQ(printable("x\xEF\xBF\xBEy\xEF\xBF\xBFz\xC3\xA9"), "xyz\xC3\xA9");
}

}  // namespace
}  // namespace mervane::tests
