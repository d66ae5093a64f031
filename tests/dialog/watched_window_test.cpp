#include <gmock/gmock.h>

#include "mervane/runtime_errors.h"
#include "tests/dialog/dialog_fixture.h"
#include "tests/support/failure_matchers.h"

namespace mervane::tests {

namespace {

using platform::OptionWindowEvents;
using platform::UnloadMode;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// What all windows of one test share.
struct Watch {
  int made = 0;
  int alive = 0;
  const platform::OptionItems* options = nullptr;
  OptionWindowEvents* events = nullptr;
  std::vector<std::string> told;
  std::string watchedKey = "CLUSTERS";               ///< whose value is noted with every change
  std::function<void(OptionWindowEvents&)> showing;  ///< what the user does
  bool hidingFails = false;
};

/// A window that notes what it is told.
class WatchedWindow final : public platform::OptionWindow {
 public:
  explicit WatchedWindow(Watch& watch) : watch_(watch) {
    ++watch_.made;
    ++watch_.alive;
  }
  ~WatchedWindow() override { --watch_.alive; }
  WatchedWindow(const WatchedWindow&) = delete;
  WatchedWindow& operator=(const WatchedWindow&) = delete;

  void load(const std::string&, const platform::OptionItems& options, const platform::OptionItems& buttons,
            OptionWindowEvents& events) override {
    watch_.options = &options;
    watch_.events = &events;
    watch_.told.push_back("load " + std::to_string(options.Count()) + " and " + std::to_string(buttons.Count()));
  }
  void itemsChanged() override {
    const platform::OptionItem& item = watch_.options->Item(watch_.watchedKey);
    watch_.told.push_back("changed: " + toText(item.Value, globals::locale()) + (item.Checked ? "on" : ""));
  }
  void show() override {
    if (watch_.showing) watch_.showing(*watch_.events);
  }
  void hide() override {
    if (watch_.hidingFails) raise(runtime::applicationDefined);
    watch_.told.emplace_back("hide");
  }
  [[nodiscard]] float measure(platform::WindowMeasure) const override { return 100.0F; }
  void setMeasure(platform::WindowMeasure, float) override {}
  [[nodiscard]] float listWidth() const override { return 6000.0F; }

 private:
  Watch& watch_;
};

/// What the dialog tells its window, and when it lets go of it.
class WatchedDialog : public DialogTest {
 protected:
  WatchedDialog() {
    machine.services->createOptionWindow = [this] { return std::make_unique<WatchedWindow>(watch); };
  }
  void show(std::function<void(OptionWindowEvents&)> actions) {
    watch.showing = std::move(actions);
    dialog.Show();
  }

  Watch watch;
};

TEST_F(WatchedDialog, TheWindowIsLoadedWithAllItemsAndHearsOfTheirLoadedValuesOnce) {
  machine.keyStore->putText(valuesPath, "CLUSTERS", "7");
  EXPECT_EQ(dialog.suiButtons().Count(), 2);
  EXPECT_THAT(watch.told, ElementsAre("load 52 and 2", "changed: 7"));
}

TEST_F(WatchedDialog, TheWindowHearsOfAnAccessorsValueOnceItStands) {
  static_cast<void>(dialog.Clusters());
  watch.told.clear();
  dialog.Clusters("12");
  watch.watchedKey = "USECONVEX";
  dialog.UseConvex(false);
  dialog.UseConvex(true);
  watch.watchedKey = "ACTIVATIONFUNCTION";
  dialog.ActivationFunction(ACTIVATE_FUNC_TANH);
  EXPECT_THAT(watch.told,
              ElementsAre("changed: 12", "changed: ", "changed: on", "changed: Hyperbolic tangent function"));
}

TEST_F(WatchedDialog, TheWindowHearsOfAnEventsValueOnceItStands) {
  static_cast<void>(dialog.Clusters());
  watch.told.clear();
  show([](OptionWindowEvents& events) { EXPECT_TRUE(events.edited("CLUSTERS", "12.4")); });
  EXPECT_THAT(watch.told, ElementsAre("changed: 12"));
}

TEST_F(WatchedDialog, ARefusedWordIsAnsweredByABeepAndNoReport) {
  show([](OptionWindowEvents& events) {
    EXPECT_FALSE(events.edited("LEARNINGRATE", "word"));
    EXPECT_FALSE(events.edited("EPOCHS", "word"));
  });
  EXPECT_THAT(reports, IsEmpty());
  EXPECT_EQ(machine.screen->beeps, 2);
}

TEST_F(WatchedDialog, AFactoryThatGivesNoWindowFailsTheLoading) {
  machine.services->createOptionWindow = [] { return std::unique_ptr<platform::OptionWindow>(); };
  EXPECT_THAT(failureOf([&] { static_cast<void>(dialog.Clusters()); }),
              IsFailure(91, "Object variable or With block variable not set", ""));
}

TEST_F(WatchedDialog, ItemsThatTheDialogSizesItselfHaveNoAutomaticWidthInTheBarToo) {
  for (const platform::OptionItem& button : dialog.suiButtons()) EXPECT_FALSE(button.automaticWidth) << button.Key;
  for (const platform::OptionItem& choice : dialog.suiOptions().Item("ACTIVATIONFUNCTION").SubItems)
    EXPECT_EQ(choice.indent, 1) << choice.Key;
}

TEST_F(WatchedDialog, UnloadingFromCodeLetsTheWindowOfAHiddenDialogGo) {
  static_cast<void>(dialog.Clusters());
  dialog.Unload();
  EXPECT_EQ(watch.alive, 0);
  EXPECT_THAT(watch.told, Not(testing::Contains("hide")));
}

TEST_F(WatchedDialog, UnloadingInTheMiddleOfAShowingHidesTheWindowThatLivesToItsEnd) {
  int during = 0;
  show([&](OptionWindowEvents&) {
    dialog.Unload();
    during = watch.alive;
  });
  EXPECT_EQ(during, 1);
  EXPECT_EQ(watch.alive, 0);
  EXPECT_EQ(watch.told.back(), "hide");
}

TEST_F(WatchedDialog, ASecondWindowOfOneShowingGoesWhenItUnloads) {
  int loaded = 0;
  int unloaded = 0;
  show([&](OptionWindowEvents&) {
    dialog.Unload();
    static_cast<void>(dialog.Clusters());
    loaded = watch.alive;
    dialog.Unload();
    unloaded = watch.alive;
  });
  EXPECT_EQ(loaded, 2);
  EXPECT_EQ(unloaded, 1) << "the one whose showing is on";
  EXPECT_EQ(watch.alive, 0);
}

TEST_F(WatchedDialog, UnloadingIsTracedAsTheQuestionAndTheUnloading) {
  static_cast<void>(dialog.Clusters());
  globals::errorHandler().Init(ehaErrorForm, "errors", true, true, tfLogFile, "trace");
  dialog.Unload();
  EXPECT_THAT(machine.textFiles->content("trace"),
              HasSubstr("Entered routine: MervaneClass3.frmMain.Form_QueryUnload"));
  EXPECT_THAT(machine.textFiles->content("trace"), HasSubstr("Entered routine: MervaneClass3.frmMain.Form_Unload"));
}

TEST_F(WatchedDialog, ADialogThatIsNotLoadedKeepsItsOwnerWhenItIsToldToUnload) {
  const auto owner = std::make_shared<int>(1);
  dialog.Classifier(owner);
  dialog.Unload();
  EXPECT_EQ(dialog.Classifier(), owner);
}

TEST_F(WatchedDialog, EventsBehindTheUnloadingDoNothing) {
  show([&](OptionWindowEvents& events) {
    const auto owner = std::make_shared<int>(1);
    dialog.Unload();
    dialog.Classifier(owner);
    watch.told.clear();
    events.buttonClicked("CLOSE");
    events.resized();
    EXPECT_TRUE(events.closeRequested(UnloadMode::userRequest));
    EXPECT_EQ(dialog.Classifier(), owner);
    EXPECT_EQ(dialog.Tag(), "");
  });
  EXPECT_THAT(watch.told, IsEmpty());
}

TEST_F(WatchedDialog, AFailureThatNobodyCouldShowOutsideAShowingIsNotRaisedByTheNextOne) {
  static_cast<void>(dialog.Clusters());
  watch.hidingFails = true;
  machine.services->clock = nullptr;  // Without the time there is no report, and the handling fails itself.
  watch.events->buttonClicked("CLOSE");
  watch.hidingFails = false;
  EXPECT_FALSE(failureOf([&] { show({}); }));
}

TEST_F(WatchedDialog, AShowingThatBreaksOffTakesItsUnshownFailureWithIt) {
  machine.services->clock = nullptr;
  EXPECT_TRUE(failureOf([&] {
    show([&](OptionWindowEvents& events) {
      watch.hidingFails = true;
      events.buttonClicked("CLOSE");
      watch.hidingFails = false;
      raise(runtime::overflow);  // The window's own failure.
    });
  }));
  EXPECT_FALSE(failureOf([&] { show({}); }));
}

TEST_F(WatchedDialog, ADialogWhoseLoadingWasAbortedSavesNothingAndDoesNotFail) {
  globals::errorHandler().Init(ehaErrorForm, "errors", true, true, tfLogFile, "trace");
  machine.textFiles->script.failCall(1);
  answers = {"ABORT"};
  show([](OptionWindowEvents& events) { events.buttonClicked("CLASSIFY"); });
  EXPECT_THAT(reports, SizeIs(1));
  EXPECT_EQ(dialog.Tag(), "CLASSIFY");
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, valuesPath));
}

}  // namespace

}  // namespace mervane::tests
