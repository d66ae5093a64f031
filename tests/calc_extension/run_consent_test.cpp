#include "calc/run_consent.h"

#include <gtest/gtest.h>

#include <vector>

namespace mervane::addin {
namespace {

class RunConsent : public testing::Test {
 protected:
  bool agreed(const std::optional<Objections>& objections, bool silent, bool overwrites = false) {
    told.clear();
    asked.clear();
    return isAgreed(objections, {.silent = silent,
                                 .overwrites = overwrites,
                                 .tell = [this](const std::string& refusal) { told.push_back(refusal); },
                                 .ask =
                                     [this](const std::string& question) {
                                       asked.push_back(question);
                                       return answer;
                                     }});
  }

  bool answer = false;
  std::vector<std::string> told;
  std::vector<std::string> asked;
};

TEST_F(RunConsent, ADocumentThatCannotBeLookedAtIsAskedAboutInTheDialog) {
  EXPECT_FALSE(agreed(std::nullopt, false));
  ASSERT_EQ(asked.size(), 1U);
  EXPECT_NE(asked[0].find("could not be found out"), std::string::npos) << asked[0];
  EXPECT_TRUE(asked[0].ends_with("\n\nClusterize all the same?")) << asked[0];
  answer = true;
  EXPECT_TRUE(agreed(std::nullopt, false));
  EXPECT_TRUE(told.empty());
}

TEST_F(RunConsent, ADocumentThatCannotBeLookedAtIsRefusedToASilentRun) {
  for (const bool overwrites : {false, true}) {
    EXPECT_FALSE(agreed(std::nullopt, true, overwrites));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("could not be found out"), std::string::npos) << told[0];
    EXPECT_TRUE(asked.empty());
  }
}

TEST_F(RunConsent, WithoutObjectionsNobodyIsAsked) {
  EXPECT_TRUE(agreed(Objections{}, false));
  EXPECT_TRUE(agreed(Objections{}, true));
  EXPECT_TRUE(told.empty() && asked.empty());
}

TEST_F(RunConsent, ARefusalIsToldWhateverTheUserAllows) {
  const Objections refused{.refusal = "no", .question = {}, .tornApart = {}};
  answer = true;
  EXPECT_FALSE(agreed(refused, false));
  EXPECT_EQ(told, std::vector<std::string>{"no"});
  EXPECT_FALSE(agreed(refused, true, true));
  EXPECT_EQ(told, std::vector<std::string>{"no"});
}

TEST_F(RunConsent, ASilentRunIsToldWhatItWouldHarmAndHowToAllowIt) {
  const Objections harmful{.refusal = {}, .question = "It harms.\n\nGo on?", .tornApart = "It tears.\n\nGo on?"};
  EXPECT_FALSE(agreed(harmful, true));
  EXPECT_EQ(told, std::vector<std::string>{"It harms.\n\nGive the option Overwrite with true to let it go."});
  EXPECT_TRUE(agreed(harmful, true, true));
  EXPECT_TRUE(agreed(Objections{.refusal = {}, .question = {}, .tornApart = harmful.tornApart}, true));
  EXPECT_TRUE(asked.empty());
}

TEST_F(RunConsent, TheDialogAsksAboutHarmsOrElseAboutTornRows) {
  Objections objections{.refusal = {}, .question = "It harms.", .tornApart = "It tears."};
  EXPECT_FALSE(agreed(objections, false));
  EXPECT_EQ(asked, std::vector<std::string>{"It harms."});
  objections.question.clear();
  answer = true;
  EXPECT_TRUE(agreed(objections, false));
  EXPECT_EQ(asked, std::vector<std::string>{"It tears."});
}

}  // namespace
}  // namespace mervane::addin
