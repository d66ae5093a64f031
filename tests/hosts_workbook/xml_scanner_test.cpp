#include "hosts/workbook/xml_scanner.h"

#include <gtest/gtest.h>

#include "fixture.h"

namespace mervane::workbook::tests {
namespace {

using Token = XmlScanner::Token;
using Texts = std::vector<std::string>;

/// Hands out the text in pieces of at most so many bytes.
XmlScanner::Source inPieces(std::string text, std::size_t piece) {
  return [text = std::move(text), piece, at = std::size_t{0}](char* bytes, std::size_t size) mutable {
    const std::size_t count = std::min({size, piece, text.size() - at});
    text.copy(bytes, count, at);
    at += count;
    return count;
  };
}

XmlScanner scannerOf(const std::string& text, std::size_t piece = 4096) {
  return {inPieces(text, piece), "part.xml"};
}

/// Everything that a scanner says about a part: "<name a=1 b=2", "/name", "text".
Texts tokensOf(const std::string& text, std::size_t piece = 4096) {
  XmlScanner scanner = scannerOf(text, piece);
  Texts tokens;
  for (;;) {
    const Token token = scanner.next();
    if (token == Token::end) return tokens;
    std::string words;
    if (token == Token::text) {
      words = "\"";
      scanner.appendText(words);
    } else if (token == Token::endTag) {
      words = "/" + std::string(scanner.name());
    } else {
      words = "<" + std::string(scanner.name());
      std::string_view rest = scanner.attributes();
      std::string_view name;
      std::string_view value;
      while (scanner.nextAttribute(rest, name, value)) words += " " + std::string(name) + "=" + scanner.resolved(value);
    }
    tokens.push_back(std::move(words));
  }
}

std::string refusalOf(const std::string& text, std::size_t piece = 4096) {
  const std::string whole = failureOf([&] { static_cast<void>(tokensOf(text, piece)); });
  EXPECT_NE(whole.find("\"part.xml\""), std::string::npos) << whole;
  return whole;
}

TEST(XmlScanner, TagsTextsAndAttributesComeInOrder) {
  EXPECT_EQ(tokensOf("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a x=\"1\" y = '2'>t<b/>u</a>\n"),
            (Texts{"<a x=1 y=2", "\"t", "<b", "/b", "\"u", "/a"}));
  EXPECT_EQ(tokensOf("<p:a\n p:x=\"a>b\"></p:a >"), (Texts{"<p:a p:x=a>b", "/p:a"}));
}

TEST(XmlScanner, PiecesOfAnySizeGiveTheSameTokens) {
  const std::string text =
      "\xEF\xBB\xBF<?xml version='1.0'?><!-- a > b --><a x=\"&quot;'\"><![CDATA[<&>]]>&#65;&#x20AC;<b  c = \"d\"  "
      "/></a>";
  const Texts whole = tokensOf(text);
  EXPECT_EQ(whole, (Texts{"<a x=\"'", "\"<&>", "\"A\xE2\x82\xAC", "<b c=d", "/b", "/a"}));
  for (const std::size_t piece : {1U, 2U, 3U, 5U, 8U, 13U}) EXPECT_EQ(tokensOf(text, piece), whole) << piece;
}

TEST(XmlScanner, APartMuchLargerThanItsWindowIsReadThrough) {
  std::string text = "<a>";
  constexpr int elements = 100000;
  for (int i = 0; i < elements; ++i) text += "<b c=\"" + std::to_string(i) + "\">" + std::to_string(i) + "</b>";
  text += "</a>";
  const Texts tokens = tokensOf(text, 1000);
  ASSERT_EQ(tokens.size(), 3U * elements + 2);
  EXPECT_EQ(tokens[tokens.size() - 4], "<b c=99999");
  EXPECT_EQ(tokens[tokens.size() - 3], "\"99999");
}

TEST(XmlScanner, ATextLongerThanTheWindowStaysWhole) {
  const std::string text(700000, 'x');
  EXPECT_EQ(tokensOf("<a>" + text + "</a>", 997), (Texts{"<a", "\"" + text, "/a"}));
  EXPECT_EQ(tokensOf("<a b=\"" + text + "\"/>", 997), (Texts{"<a b=" + text, "/a"}));
}

TEST(XmlScanner, LineEndsBecomeLineFeeds) {
  EXPECT_EQ(tokensOf("<a>1\r\n2\r3\n4</a>"), (Texts{"<a", "\"1\n2\n3\n4", "/a"}));
}

TEST(XmlScanner, DepthCountsTheOpenElements) {
  XmlScanner scanner = scannerOf("<a><b/></a>");
  const auto depthAfterNext = [&] {
    static_cast<void>(scanner.next());
    return scanner.depth();
  };
  EXPECT_EQ(depthAfterNext(), 1U);
  EXPECT_EQ(depthAfterNext(), 2U);
  EXPECT_EQ(depthAfterNext(), 1U);
  EXPECT_EQ(depthAfterNext(), 0U);
}

TEST(XmlScanner, AnElementIsPassedOverWithAllThatIsInIt) {
  XmlScanner scanner = scannerOf("<a><b><c>t</c><b/></b><d/></a>", 1);
  static_cast<void>(scanner.next());
  static_cast<void>(scanner.next());
  scanner.skipElement();
  EXPECT_EQ(scanner.next(), Token::startTag);
  EXPECT_EQ(scanner.name(), "d");
  scanner.skipElement();
  EXPECT_EQ(scanner.next(), Token::endTag);
  EXPECT_EQ(scanner.name(), "a");
  EXPECT_EQ(scanner.next(), Token::end);
}

TEST(XmlScanner, ACaptureKeepsEveryByte) {
  for (const std::size_t piece : {1U, 7U, 4096U}) {
    XmlScanner scanner = scannerOf("<a><b x='1'> &amp; <!-- c --><c/></b>rest</a>", piece);
    static_cast<void>(scanner.next());
    scanner.beginCapture();
    static_cast<void>(scanner.next());
    scanner.skipElement();
    EXPECT_EQ(scanner.takeCapture(true), "<b x='1'> &amp; <!-- c --><c/></b>") << piece;
    EXPECT_EQ(scanner.next(), Token::text);
    scanner.beginCapture();
    EXPECT_EQ(scanner.next(), Token::endTag);
    EXPECT_EQ(scanner.takeCapture(false), "") << piece;
  }
}

TEST(XmlScanner, ACaptureMayBeLargerThanTheWindow) {
  std::string inside;
  for (int i = 0; i < 60000; ++i) inside += "<i>" + std::to_string(i) + "</i>";
  XmlScanner scanner = scannerOf("<a><b>" + inside + "</b></a>", 5000);
  static_cast<void>(scanner.next());
  static_cast<void>(scanner.next());
  scanner.beginCapture();
  scanner.skipElement();
  EXPECT_EQ(scanner.takeCapture(false), inside);
}

TEST(XmlScanner, WhatIsNotWellFormedIsRefusedInWhateverPieces) {
  for (const char* text : {"",
                           " ",
                           "<a>",
                           "<a",
                           "<a><b></a>",
                           "</a>",
                           "<a></a></a>",
                           "<a/><b/>",
                           "x<a/>",
                           "<a/>x",
                           "<>",
                           "< a/>",
                           "<a b></a>",
                           "<a b=c/>",
                           "<a b=\"c/>",
                           "<a b=\"<\"/>",
                           "<a>&nbsp;</a>",
                           "<a>&</a>",
                           "<a>&#0;</a>",
                           "<a>&#xD800;</a>",
                           "<a>&#x110000;</a>",
                           "<a>&#;</a>",
                           "<a>\x01</a>",
                           "<a>\xFF</a>",
                           "<a><!-- </a>",
                           "<a><![CDATA[ </a>",
                           "<?xml ",
                           "<=/>"}) {
    for (const std::size_t piece : {1U, 4096U}) {
      SCOPED_TRACE(std::string(text) + " by " + std::to_string(piece));
      EXPECT_FALSE(refusalOf(text, piece).empty());
    }
  }
}

TEST(XmlScanner, DocumentTypesAndOtherEncodingsAreRefused) {
  EXPECT_NE(refusalOf("<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>").find("document type"), std::string::npos);
  EXPECT_NE(refusalOf("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>").find("UTF-8"), std::string::npos);
  const std::string fourBytes("\0\0\0<\0\0\0a\0\0\0/\0\0\0>", 16);
  EXPECT_NE(refusalOf(fourBytes).find("UTF-8"), std::string::npos);
}

}  // namespace
}  // namespace mervane::workbook::tests
