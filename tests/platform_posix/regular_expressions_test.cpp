#include "platform/posix/regular_expressions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "mervane/failure.h"

namespace mervane::tests {

namespace {

using Texts = std::vector<std::string>;

std::unique_ptr<platform::RegularExpression> expression(const std::string& pattern, bool ignoreCase = false,
                                                        bool global = false) {
  auto made = posix::RegularExpressions().create();
  made->Pattern(pattern);
  made->IgnoreCase(ignoreCase);
  made->Global(global);
  return made;
}

Texts matches(const std::string& pattern, const std::string& text, bool ignoreCase = false) {
  Texts result;
  for (const auto& match : expression(pattern, ignoreCase, true)->Execute(text)) result.push_back(match.text);
  return result;
}

TEST(RegularExpressions, CaseCountsAndOnlyTheFirstMatchIsTakenAtCreation) {
  const auto fresh = posix::RegularExpressions().create();
  fresh->Pattern("b");
  EXPECT_EQ(fresh->Replace("aBbb", "x"), "aBxb");
  EXPECT_EQ(fresh->Execute("aBbb").size(), 1U);
}

TEST(RegularExpressions, GroupsThatTookNoPartAreEmpty) {
  const auto found = expression("(a)|(b)")->Execute("b");
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].subMatches, (Texts{"", "b"}));
  const auto trailing = expression("a(b)?(c)?")->Execute("a");
  ASSERT_EQ(trailing.size(), 1U);
  EXPECT_EQ(trailing[0].subMatches, (Texts{"", ""}));
}

TEST(RegularExpressions, DollarMatchesAtTheVeryEndAlone) {
  EXPECT_TRUE(matches("a$", "a\n").empty());
  EXPECT_EQ(matches("a$", "ba"), (Texts{"a"}));
}

TEST(RegularExpressions, DotIsOneCharacterButNoLineEnd) {
  EXPECT_EQ(matches(".", "ä\n€\r𝄞"), (Texts{"ä", "€", "𝄞"}));
}

TEST(RegularExpressions, EscapesAreThoseOfEcmaScript) {
  EXPECT_EQ(matches("\\u00e4\\x41", "äA"), (Texts{"äA"}));
  EXPECT_EQ(matches("a\\!b", "a!b"), (Texts{"a!b"}));
  EXPECT_EQ(matches("[]", "x"), Texts());
  EXPECT_EQ(matches("(?:(a)|b)\\1c", "bc"), (Texts{"bc"}));
}

TEST(RegularExpressions, DigitsAndLetterRangesAreThoseOfAscii) {
  EXPECT_TRUE(matches("\\d", "\u0661").empty());
  EXPECT_TRUE(matches("[A-Z]", "\u017F\u212A", true).empty());
  EXPECT_EQ(matches("[A-Z]", "kS", true), (Texts{"k", "S"}));
}

TEST(RegularExpressions, LettersOfOtherScriptsIgnoreCaseToo) {
  EXPECT_EQ(matches("Ä", "ä", true), (Texts{"ä"}));
  EXPECT_EQ(matches("\u017F", "\u017F", true), (Texts{"\u017F"}));
}

TEST(RegularExpressions, TextAroundARareLetterComesBackUnchanged) {
  EXPECT_EQ(expression("b", true, true)->Replace("\u017Fb\u212A", "\u212A"), "\u017F\u212A\u212A");
  EXPECT_EQ(expression(".+", true)->Execute("\u017F\u212A").front().text, "\u017F\u212A");
}

TEST(RegularExpressions, EmptyMatchesMoveOnByACharacter) {
  EXPECT_EQ(expression("x*", false, true)->Replace("äx", "-"), "-ä--");
  EXPECT_EQ(matches("", "ab"), (Texts{"", "", ""}));
}

TEST(RegularExpressions, ReplacementKnowsGroupsTheMatchAndTheDollar) {
  EXPECT_EQ(expression("(a)(b)")->Replace("xaby", "[$2$1|$&|$$|$3|$|$x]"), "x[ba|ab|$|$3|$|$x]y");
  EXPECT_EQ(expression("(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)")->Replace("abcdefghijk", "$11$10$1$12$01$0"), "kjaa2a$0");
  EXPECT_EQ(expression("(a)|(b)")->Replace("b", "<$1>"), "<>");
}

TEST(RegularExpressions, MalformedPatternIsAFailureThatNamesIt) {
  for (const std::string pattern : {"(", "[a", "a**", "(*LIMIT_MATCH=1)a"}) {
    try {
      static_cast<void>(expression(pattern)->Execute("a"));
      ADD_FAILURE() << pattern;
    } catch (const Failure& failure) {
      EXPECT_NE(failure.description().find(pattern), std::string::npos) << failure.description();
    }
  }
}

TEST(RegularExpressions, TextThatIsNoUtf8IsAFailure) {
  EXPECT_THROW(static_cast<void>(expression("a")->Execute("\xFF")), Failure);
}

TEST(RegularExpressions, MegabytesNeitherOverflowTheStackNorRunForEver) {
  const std::string text(4'000'000, 'a');
  EXPECT_EQ(expression("^(a|b)*$")->Execute(text.substr(0, 100'000)).size(), 1U);
  EXPECT_TRUE(expression("^((.+)\\!)?([A-Z]{1,2})(\\d+)$", true)->Execute(text).empty());
  // Either the machine gives up with a failure or it answers; it never crashes.
  EXPECT_THROW(static_cast<void>(expression("^(a|b)*c$")->Execute(text)), Failure);
  EXPECT_THROW(static_cast<void>(expression("^(a+)+$")->Execute(text.substr(0, 1'000) + "b")), Failure);
}

TEST(RegularExpressions, PatternAndSwitchesCanChangeBetweenUses) {
  const auto changing = expression("a");
  EXPECT_TRUE(changing->Execute("A").empty());
  changing->IgnoreCase(true);
  EXPECT_EQ(changing->Execute("A").size(), 1U);
  changing->Pattern("b");
  EXPECT_TRUE(changing->Execute("A").empty());
}

}  // namespace

}  // namespace mervane::tests
