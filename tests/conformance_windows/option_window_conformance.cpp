#include "tests/conformance_windows/option_window_conformance.h"

#include <cmath>
#include <vector>

#include "dialog/designed_items.h"
#include "dialog/frm_main.h"
#include "support/globals.h"
#include "tests/support/test_machine.h"

namespace mervane::tests {

using platform::OptionItem;
using platform::OptionItems;
using platform::OptionWindow;
using platform::UnloadMode;
using platform::WindowMeasure;

namespace {

/// Notes what a window reports, and does what a dialog does to its items so that the window has something to draw.
class Receiver final : public platform::OptionWindowEvents {
 public:
  bool edited(const std::string& key, const std::string& text) override {
    events.push_back("edited " + key + " " + text);
    if (text == refused) return false;
    options.Item(key).Value = text;
    window->itemsChanged();
    return true;
  }
  void chosen(const std::string& key, const std::string& caption) override {
    events.push_back("chosen " + key + " " + caption);
    options.Item(key).Value = caption;
    window->itemsChanged();
  }
  void browsed(const std::string& key) override {
    events.push_back("browsed " + key);
    if (hideOnBrowse) window->hide();
  }
  void clicked(const std::string& key) override {
    events.push_back("clicked " + key);
    OptionItem& item = options.Item(key);
    item.Checked = item.kind == platform::OptionKind::check && !item.Checked;
    if (item.kind == platform::OptionKind::groupHeader) item.Expanded = !item.Expanded;
    window->itemsChanged();
  }
  void buttonClicked(const std::string& key) override {
    events.push_back("button " + key);
    window->hide();
  }
  void resized() override {
    ++resizes;
    lastWidth = window->listWidth();
  }
  bool closeRequested(UnloadMode mode) override {
    events.push_back("close " + std::to_string(static_cast<int>(mode)));
    return refusedCloses-- <= 0;
  }

  OptionItems options = dialog::designedOptions();
  OptionItems buttons = dialog::designedButtons();
  std::vector<std::string> events;
  std::string refused = "refuse me";
  bool hideOnBrowse = true;
  int refusedCloses = 0;
  int resizes = 0;
  float lastWidth = -1.0F;
  OptionWindow* window = nullptr;
};

/// A window on a receiver of ours, as the user of the test sees it.
struct Stage {
  explicit Stage(OptionWindowUser& user) : window(user.makeWindow()) {
    receiver.window = window.get();
    window->load("Mervane Kelvash", receiver.options, receiver.buttons, receiver);
  }
  Receiver receiver;
  std::unique_ptr<OptionWindow> window;
};

}  // namespace

TEST_P(OptionWindowConformance, TheSameActionsGiveTheSameEvents) {
  Stage stage(*user);
  user->atNextShowing([&] {
    user->edit("CLUSTERS", "5");
    user->edit("INPUTS", "Sheet1!A1:B9");
    user->choose("ACTIVATIONFUNCTION", "Threshold function");
    user->click("USECONVEX");
    user->click("OUTPUTGROUP");
    user->click("SPLITMULTIPLE");
    user->click("DEFAULTS");
    user->browse("OUTPUTS");
  });
  stage.window->show();
  EXPECT_EQ(
      stage.receiver.events,
      (std::vector<std::string>{
          "edited CLUSTERS 5", "edited INPUTS Sheet1!A1:B9", "chosen ACTIVATIONFUNCTION Threshold function",
          "clicked USECONVEX", "clicked OUTPUTGROUP", "clicked SPLITMULTIPLE", "clicked DEFAULTS", "browsed OUTPUTS"}));
}

TEST_P(OptionWindowConformance, BothButtonsReportTheirKeysAndHidingEndsTheShowing) {
  Stage stage(*user);
  for (const char* key : {"CLASSIFY", "CLOSE"}) {
    user->atNextShowing([&, key] { user->press(key); });
    stage.window->show();
  }
  EXPECT_EQ(stage.receiver.events, (std::vector<std::string>{"button CLASSIFY", "button CLOSE"}));
}

TEST_P(OptionWindowConformance, ARefusedEntryIsShownAsItWasBefore) {
  Stage stage(*user);
  user->atNextShowing([&] {
    user->edit("EPOCHS", "250");
    EXPECT_EQ(user->shownText("EPOCHS"), "250");
    user->edit("EPOCHS", "refuse me");
    EXPECT_EQ(user->shownText("EPOCHS"), "250");
    user->press("CLOSE");
  });
  stage.window->show();
  EXPECT_EQ(stage.receiver.events,
            (std::vector<std::string>{"edited EPOCHS 250", "edited EPOCHS refuse me", "button CLOSE"}));
}

TEST_P(OptionWindowConformance, WhatTheItemsSayIsDrawn) {
  Stage stage(*user);
  user->atNextShowing([&] {
    EXPECT_EQ(user->shownText("CLUSTERS"), "3");
    EXPECT_TRUE(user->shownChecked("SCALEVALUES"));
    EXPECT_FALSE(user->shownAtAll("SETCOLORS"));
    stage.receiver.options.Item("CLUSTERS").Value = "8";
    stage.receiver.options.Item("SCALEVALUES").Checked = false;
    stage.receiver.options.Item("OUTPUTGROUP").Expanded = true;
    stage.window->itemsChanged();
    EXPECT_EQ(user->shownText("CLUSTERS"), "8");
    EXPECT_FALSE(user->shownChecked("SCALEVALUES"));
    EXPECT_TRUE(user->shownAtAll("SETCOLORS"));
    user->press("CLOSE");
  });
  stage.window->show();
}

TEST_P(OptionWindowConformance, ChangesWhileHiddenAreSeenAtTheNextShowing) {
  Stage stage(*user);
  user->atNextShowing([&] { user->browse("INPUTS"); });
  stage.window->show();
  stage.receiver.options.Item("INPUTS").Value = "Sheet2!C3:D9";
  stage.window->itemsChanged();
  user->atNextShowing([&] {
    EXPECT_EQ(user->shownText("INPUTS"), "Sheet2!C3:D9");
    user->press("CLOSE");
  });
  stage.window->show();
}

TEST_P(OptionWindowConformance, TheCloseBoxAsksAndStaysWhereItIsRefused) {
  Stage stage(*user);
  stage.receiver.refusedCloses = 1;
  user->atNextShowing([&] {
    user->pressCloseBox();
    user->click("USECONVEX");  // Still there.
    user->pressCloseBox();
  });
  stage.window->show();
  EXPECT_EQ(stage.receiver.events, (std::vector<std::string>{"close 0", "clicked USECONVEX", "close 0"}));
}

TEST_P(OptionWindowConformance, TheFirstShowingAndEachNewWidthAreReported) {
  Stage stage(*user);
  user->atNextShowing([&] {
    EXPECT_GE(stage.receiver.resizes, 1);
    EXPECT_EQ(stage.receiver.lastWidth, stage.window->listWidth());
    const int before = stage.receiver.resizes;
    const float list = stage.window->listWidth();
    const float outer = stage.window->measure(WindowMeasure::width);
    user->dragWidth(outer + 1500.0F);
    EXPECT_GT(stage.receiver.resizes, before);
    EXPECT_NEAR(stage.window->listWidth(), list + 1500.0F, 30.0F);
    EXPECT_EQ(stage.receiver.lastWidth, stage.window->listWidth());
    user->press("CLOSE");
  });
  stage.window->show();
}

TEST_P(OptionWindowConformance, PlaceAndSizeAreKeptAsSetWithinAPixel) {
  Stage stage(*user);
  const std::pair<WindowMeasure, float> measures[] = {{WindowMeasure::left, 1500.0F},
                                                      {WindowMeasure::top, 1200.0F},
                                                      {WindowMeasure::width, 6000.0F},
                                                      {WindowMeasure::height, 7500.0F}};
  for (const auto& [which, twips] : measures) stage.window->setMeasure(which, twips);
  user->atNextShowing([&] { user->press("CLOSE"); });
  stage.window->show();
  for (const auto& [which, twips] : measures) {
    EXPECT_NEAR(stage.window->measure(which), twips, platform::twipsPerPixel);
  }
}

TEST_P(OptionWindowConformance, TheDialogPlaysItsWholeLoopInTheWindow) {
  TestMachine machine;
  machine.services->createOptionWindow = [this] { return user->makeWindow(); };
  frmMain form;
  user->atNextShowing([&] { user->browse("INPUTS"); });
  form.Show();
  EXPECT_EQ(form.Tag(), "INPUTS");
  form.Inputs("Sheet1!B2:E151");
  user->atNextShowing([&] { user->browse("OUTPUTS"); });
  form.Show();
  EXPECT_EQ(form.Tag(), "OUTPUTS");
  form.Outputs("Sheet1!G2");
  user->atNextShowing([&] {
    EXPECT_EQ(user->shownText("INPUTS"), "Sheet1!B2:E151");
    EXPECT_EQ(user->shownText("OUTPUTS"), "Sheet1!G2");
    user->edit("CLUSTERS", "1");
    EXPECT_EQ(machine.screen->beeps, 1);
    EXPECT_EQ(user->shownText("CLUSTERS"), "3");
    user->edit("CLUSTERS", "3.7");
    EXPECT_EQ(user->shownText("CLUSTERS"), "4");
    user->click("OUTPUTGROUP");
    user->click("SPLITMULTIPLE");
    EXPECT_TRUE(user->shownChecked("SPLITMULTIPLE"));
    EXPECT_FALSE(user->shownChecked("SPLITONE"));
    user->click("SETCOLORS");
    EXPECT_FALSE(user->shownChecked("SETCOLORS"));
    user->choose("ACTIVATIONFUNCTION", "Log-Sigmoid Function");
    user->press("CLASSIFY");
  });
  form.Show();
  EXPECT_EQ(form.Tag(), "CLASSIFY");
  EXPECT_TRUE(form.IsLoaded());
  EXPECT_EQ(form.Clusters(), "4");
  EXPECT_EQ(form.ActivationFunction(), ACTIVATE_FUNC_EXP);
  EXPECT_FALSE(form.SplitToOneColumn());

  user->atNextShowing([&] { user->pressCloseBox(); });
  form.Show();
  EXPECT_EQ(form.Tag(), "CLOSE");
  EXPECT_FALSE(form.IsLoaded());

  // A new load finds what "Clusterize" has stored.
  user->atNextShowing([&] {
    EXPECT_EQ(user->shownText("CLUSTERS"), "4");
    EXPECT_EQ(user->shownText("INPUTS"), "Sheet1!B2:E151");
    EXPECT_EQ(user->shownText("ACTIVATIONFUNCTION"), "Log-Sigmoid Function");
    user->press("CLOSE");
  });
  form.Show();
}

}  // namespace mervane::tests
