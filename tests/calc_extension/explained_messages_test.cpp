#include "calc/explained_messages.h"

#include <gtest/gtest.h>

#include "mervane/failure.h"

namespace mervane::addin {
namespace {

using platform::MessageBox;

class ShownMessages final : public MessageBox {
 public:
  Answer show(const std::string& text, Buttons buttons) override {
    shown.push_back(text);
    return buttons == Buttons::ok ? Answer::ok : Answer::retry;
  }
  std::vector<std::string> shown;
};

TEST(ExplainedMessages, TheFixedTextStandsFirstAndTheExplanationInTheSecondLine) {
  const auto shown = std::make_shared<ShownMessages>();
  const auto messages = explainedMessages(shown, [](const std::string& text) { return "of " + text; });
  EXPECT_EQ(messages->show("It failed.", MessageBox::Buttons::ok), MessageBox::Answer::ok);
  EXPECT_EQ(shown->shown, std::vector<std::string>{"It failed.\nof It failed."});
}

TEST(ExplainedMessages, AMessageThatNothingIsKnownAboutIsTheFixedTextAlone) {
  const auto shown = std::make_shared<ShownMessages>();
  static_cast<void>(
      explainedMessages(shown, [](const std::string&) { return std::string(); })->show("A", MessageBox::Buttons::ok));
  static_cast<void>(explainedMessages(shown, [](const std::string&) -> std::string {
                      throw Failure(1, "no");
                    })->show("B", MessageBox::Buttons::ok));
  EXPECT_EQ(shown->shown, (std::vector<std::string>{"A", "B"}));
}

TEST(ExplainedMessages, AQuestionIsAskedAsItStands) {
  const auto shown = std::make_shared<ShownMessages>();
  const auto messages = explainedMessages(shown, [](const std::string&) { return std::string("more"); });
  EXPECT_EQ(messages->show("Again?", MessageBox::Buttons::abortRetryIgnore), MessageBox::Answer::retry);
  EXPECT_EQ(shown->shown, std::vector<std::string>{"Again?"});
}

}  // namespace
}  // namespace mervane::addin
