#include "calc/texts.h"

#include <gtest/gtest.h>

#include <string>

#include "calc/window/option_tips.h"
#include "dialog/designed_items.h"
#include "support/globals.h"
#include "tests/support/test_machine.h"

namespace mervane::addin {
namespace {

class Texts : public testing::Test {
 protected:
  ~Texts() override { speak(Language::english); }
  tests::TestMachine machine;
};

TEST_F(Texts, ASpokenLanguageIsFoundByTheLocaleAndOthersAreEnglish) {
  for (const char* german : {"de", "de-DE", "de-AT", "de_CH"})
    EXPECT_EQ(languageOf(german), Language::german) << german;
  for (const char* other : {"", "en-US", "fr", "del", "nds"}) EXPECT_EQ(languageOf(other), Language::english) << other;
}

TEST_F(Texts, ATextIsSaidInTheSpokenLanguageWithItsParts) {
  constexpr Text text{"%2 of %1, 5%", "von %1: %2"};
  EXPECT_EQ(said(text, {"a", "b"}), "b of a, 5%");
  EXPECT_EQ(said(text), "%2 of %1, 5%");
  speak(Language::german);
  EXPECT_EQ(said(text, {"a", "b"}), "von a: b");
}

TEST_F(Texts, EveryOptionHasATipInEveryLanguageWithNoPartLeftOpen) {
  for (const auto& item : dialog::designedOptions()) {
    using platform::OptionKind;
    if (item.kind == OptionKind::spacer || item.kind == OptionKind::groupHeader ||
        item.kind == OptionKind::staticLabel) {
      continue;
    }
    speak(Language::english);
    const std::string english = optionTip(item.Key);
    speak(Language::german);
    const std::string german = optionTip(item.Key);
    EXPECT_FALSE(english.empty()) << item.Key;
    EXPECT_NE(english, german) << item.Key;
    for (const std::string& tip : {english, german}) {
      EXPECT_EQ(tip.find('%'), std::string::npos) << tip;
      EXPECT_FALSE(tip.ends_with('.')) << tip;
    }
  }
}

TEST_F(Texts, ATipTellsTheLimitsThatTheDialogTakes) {
  EXPECT_NE(optionTip("CLUSTERS").find("from 2 to 998"), std::string::npos);
  EXPECT_NE(optionTip("EPOCHS").find("from 2 to 99998"), std::string::npos);
  EXPECT_NE(optionTip("LEARNINGRATE").find("above 0.00001 and below 0.99999"), std::string::npos)
      << optionTip("LEARNINGRATE");
  machine.services->locale = localeNamed("de-DE");
  EXPECT_NE(optionTip("LEARNINGRATE").find("0,99999"), std::string::npos) << optionTip("LEARNINGRATE");
}

}  // namespace
}  // namespace mervane::addin
