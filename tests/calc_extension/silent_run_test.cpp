#include "calc/silent_run.h"

#include <gtest/gtest.h>

#include "dialog/frm_main.h"
#include "dialog/remembered_options.h"
#include "platform/error_window.h"
#include "support/frm_error_message.h"
#include "support/globals.h"
#include "tests/support/test_machine.h"

namespace mervane::addin {
namespace {

class SilentRun : public testing::Test {
 protected:
  /// @return how the dialog was left
  std::string play(const EnteredOptions& options, Memory memory = Memory::kept) {
    makeSilent(*machine.services, options, memory, report);
    dialog.Show();
    return dialog.Tag();
  }

  tests::TestMachine machine;
  std::string report;
  frmMain dialog;
};

TEST_F(SilentRun, OptionsAreEnteredByTheirKeysInAnyCaseAndClusterizeIsPressed) {
  EXPECT_EQ(play({{"Inputs", "Sheet1!A1:B9"},
                  {"clusters", "4"},
                  {"ActivationFunction", "2"},
                  {"SplitMultiple", "true"},
                  {"SETCOLORS", "0"},
                  {"DrawCharts", "true"}}),
            "CLASSIFY");
  EXPECT_EQ(report, "");
  EXPECT_EQ(dialog.Inputs(), "Sheet1!A1:B9");
  EXPECT_EQ(dialog.Clusters(), "4");
  EXPECT_EQ(dialog.ActivationFunction(), ACTIVATE_FUNC_TANH);
  EXPECT_FALSE(dialog.SplitToOneColumn());
  EXPECT_FALSE(dialog.SetColors());
  EXPECT_TRUE(dialog.DrawCharts());
}

TEST_F(SilentRun, TheEntriesAreRememberedAndThePlaceOfTheUnseenWindowIsNot) {
  EXPECT_EQ(play({{"Clusters", "4"}}), "CLASSIFY");
  std::size_t values = 0;
  for (const dialog::RememberedOption& option : dialog::rememberedOptions()) {
    if (option.section == dialog::windowSection) {
      EXPECT_FALSE(option.value) << option.key;
    } else if (option.value) {
      ++values;
    }
  }
  EXPECT_GT(values, 20U);
}

TEST_F(SilentRun, WhatIsRememberedIsStartedFromAndLeftAlone) {
  EXPECT_EQ(play({{"Clusters", "4"}, {"Epochs", "50"}}), "CLASSIFY");
  frmMain next;
  makeSilent(*machine.services, {{"Clusters", "5"}}, Memory::leftAlone, report);
  next.Show();
  EXPECT_EQ(next.Tag(), "CLASSIFY");
  EXPECT_EQ(next.Clusters(), "5");
  EXPECT_EQ(next.Epochs(), "50");
  for (const dialog::RememberedOption& option : dialog::rememberedOptions()) {
    if (option.key != "CLUSTERS") continue;
    EXPECT_EQ(option.value, Variant(std::int32_t{4}));
  }
}

TEST_F(SilentRun, TheLayoutIsTakenByTheNameAndTheValuesThatSettingsShow) {
  EXPECT_EQ(play({{"OUTSPLIT", "0"}}), "CLASSIFY");
  EXPECT_FALSE(dialog.SplitToOneColumn());
  frmMain next;
  makeSilent(*machine.services, {{"OutSplit", 1.0}}, Memory::kept, report);
  next.Show();
  EXPECT_TRUE(next.SplitToOneColumn());
  frmMain bad;
  makeSilent(*machine.services, {{"OUTSPLIT", "2"}}, Memory::kept, report);
  bad.Show();
  EXPECT_EQ(bad.Tag(), "CLOSE");
  EXPECT_EQ(report, "OUTSPLIT takes 1 for one column, or 0 for a column for each cluster");
}

TEST_F(SilentRun, ANumberMeansTheSameInEveryLocale) {
  machine.services->locale = localeNamed("de-DE");
  EXPECT_EQ(play({{"LearningRate", 0.25}, {"InitialWeights", "0,75"}, {"Clusters", 4.0}, {"ActivationFunction", 2.0}}),
            "CLASSIFY");
  EXPECT_EQ(report, "");
  EXPECT_EQ(dialog.LearningRate(), "0,25");
  EXPECT_EQ(dialog.InitialWeights(), "0,75");
  EXPECT_EQ(dialog.Clusters(), "4");
  EXPECT_EQ(dialog.ActivationFunction(), ACTIVATE_FUNC_TANH);
}

TEST_F(SilentRun, AChoiceIsTakenByItsNameToo) {
  EXPECT_EQ(play({{"ActivationFunction", "Threshold function"}}), "CLASSIFY");
  EXPECT_EQ(dialog.ActivationFunction(), ACTIVATE_FUNC_ZEROT);
}

TEST_F(SilentRun, WhatTheDialogDoesNotTakeEndsTheRunWithASentence) {
  const std::pair<std::string, std::string> cases[] = {
      {"Bananas", "Bananas is no option of the dialog"},
      {"Clusters", "Clusters does not take 1"},
      {"DrawCharts", ""},
      {"DataGroup", "DataGroup holds no value"},
  };
  for (const auto& [key, told] : cases) {
    report.clear();
    frmMain form;
    makeSilent(*machine.services, {{key, "1"}}, Memory::kept, report);
    form.Show();
    EXPECT_EQ(report, told);
    EXPECT_EQ(form.Tag(), told.empty() ? "CLASSIFY" : "CLOSE") << key;
  }
}

TEST_F(SilentRun, AChoiceOrASwitchThatIsNoneIsRefused) {
  EXPECT_EQ(play({{"ActivationFunction", "9"}}), "CLOSE");
  EXPECT_EQ(report, "ActivationFunction takes 1 to 4, or the name of the choice");
  report.clear();
  EXPECT_EQ(play({{"SetColors", "maybe"}}), "CLOSE");
  EXPECT_EQ(report, "SetColors takes true or false");
}

TEST_F(SilentRun, MessagesAndFailureReportsAreKeptTheFirstOfThem) {
  makeSilent(*machine.services, {}, Memory::kept, report);
  using platform::MessageBox;
  EXPECT_EQ(machine.services->messageBox->show("first", MessageBox::Buttons::ok), MessageBox::Answer::ok);
  EXPECT_EQ(machine.services->messageBox->show("second", MessageBox::Buttons::abortRetryIgnore),
            MessageBox::Answer::abort);
  EXPECT_EQ(report, "first");
  report.clear();
  frmErrorMessage& form = globals::errorMessageForm();
  form.ErrorMessage("the report");
  form.Show();
  EXPECT_EQ(form.Tag(), "ABORT");
  EXPECT_EQ(report, "the report");
  machine.services->screen->beep();
  EXPECT_EQ(machine.screen->beeps, 0);
}

}  // namespace
}  // namespace mervane::addin
