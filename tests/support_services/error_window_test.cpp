#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/error_handler.h"
#include "support/frm_error_message.h"
#include "support/globals.h"
#include "tests/support/failure_matchers.h"
#include "tests/support/test_machine.h"

namespace mervane::tests {

namespace {

using platform::ErrorWindowEvents;
using testing::ElementsAre;
using testing::IsEmpty;

/// What all windows of one test share.
struct Watch {
  std::shared_ptr<Journal> journal;
  int made = 0;
  int alive = 0;
  const platform::OptionItems* buttons = nullptr;
  ErrorWindowEvents* events = nullptr;
  std::function<void(ErrorWindowEvents&)> showing;  ///< what the user does
  std::function<void()> atEnd;
};

/// A window that enters what it is told in the journal.
class WatchedWindow final : public platform::ErrorWindow {
 public:
  explicit WatchedWindow(Watch& watch) : watch_(watch) {
    ++watch_.made;
    ++watch_.alive;
  }
  ~WatchedWindow() override {
    --watch_.alive;
    if (watch_.atEnd) watch_.atEnd();
  }
  WatchedWindow(const WatchedWindow&) = delete;
  WatchedWindow& operator=(const WatchedWindow&) = delete;

  void load(const std::string&, const platform::OptionItems&, const platform::OptionItems& buttons,
            ErrorWindowEvents& events) override {
    watch_.buttons = &buttons;
    watch_.events = &events;
    watch_.journal->add("load with " + std::to_string(buttons.Count()));
  }
  void itemsChanged() override {
    watch_.journal->add("changed: " + std::to_string(watch_.buttons->Count()) + " items, spacer " +
                        std::to_string(static_cast<int>(watch_.buttons->Item("SPACER").Width)));
  }
  void setMessage(const std::string& text) override { watch_.journal->add("message " + text); }
  void show() override {
    if (watch_.showing) watch_.showing(*watch_.events);
  }
  void hide() override { watch_.journal->add("hide"); }
  [[nodiscard]] float barWidth() const override { return 4980.0F; }

 private:
  Watch& watch_;
};

/// What the form of the failure dialog tells its window, and when it lets go of it.
class ErrorWindow : public testing::Test {
 protected:
  ErrorWindow() {
    watch.journal = machine.journal;
    machine.services->createErrorWindow = [this] { return std::make_unique<WatchedWindow>(watch); };
  }
  const std::vector<std::string>& calls() { return machine.journal->entries(); }

  TestMachine machine;
  Watch watch;
  frmErrorMessage form;
};

TEST_F(ErrorWindow, IsLoadedWithItsButtonsByWhateverComesFirst) {
  EXPECT_EQ(form.ErrorMessage(), "");
  EXPECT_THAT(calls(), ElementsAre("load with 5"));
  form.Unload();
  form.ErrorMessage("text");
  EXPECT_THAT(calls(), ElementsAre("load with 5", "load with 5", "message text"));
  form.Unload();
  form.Show();
  EXPECT_EQ(watch.made, 3);
}

TEST_F(ErrorWindow, TheBarsItemsHaveWidthsOfTheirOwnAndTheFirstIsASpacer) {
  form.Load();
  for (const platform::OptionItem& item : form.suiButtons()) EXPECT_FALSE(item.automaticWidth) << item.Key;
  for (const platform::OptionItem& item : form.suiTitle()) EXPECT_FALSE(item.automaticWidth) << item.Key;
  EXPECT_EQ(form.suiButtons().Item(1).kind, platform::OptionKind::spacer);
  EXPECT_EQ(form.suiButtons().Item(2).kind, platform::OptionKind::command);
}

TEST_F(ErrorWindow, HearsOfTheChangedItemsBeforeTheBeep) {
  form.Load();
  machine.journal->clear();
  watch.showing = [](ErrorWindowEvents& events) { events.activated(); };
  form.Show();
  EXPECT_THAT(calls(), ElementsAre("changed: 4 items, spacer 45", "screen.beep"));
}

TEST_F(ErrorWindow, HearsOfTheNewWidthOfTheSpacer) {
  form.Load();
  form.SupportMail("help@example.org");
  machine.journal->clear();
  watch.showing = [](ErrorWindowEvents& events) { events.resized(); };
  form.Show();
  // The items are 3, 57, 57, 63 and 115 pixels of 15 twips, 4425 in all: half of 4980 - 4425 + 45 - 90.
  EXPECT_THAT(calls(), ElementsAre("changed: 5 items, spacer 255"));
}

TEST_F(ErrorWindow, GoesWithTheUnloadingOfAFormThatIsNotShown) {
  form.Load();
  form.Unload();
  EXPECT_EQ(watch.alive, 0);
  EXPECT_THAT(calls(), ElementsAre("load with 5")) << "there was nothing to hide";
}

TEST_F(ErrorWindow, IsHiddenByAnUnloadingInTheMiddleOfItsShowingAndLivesToItsEnd) {
  int during = 0;
  watch.showing = [&](ErrorWindowEvents&) {
    form.Unload();
    form.Unload();
    during = watch.alive;
  };
  form.Show();
  EXPECT_EQ(during, 1);
  EXPECT_EQ(watch.alive, 0);
  EXPECT_THAT(calls(), ElementsAre("load with 5", "hide"));
}

TEST_F(ErrorWindow, ASecondWindowOfOneShowingGoesWhenItUnloads) {
  int loaded = 0;
  int unloaded = 0;
  watch.showing = [&](ErrorWindowEvents&) {
    form.Unload();
    form.Load();
    loaded = watch.alive;
    form.Unload();
    unloaded = watch.alive;
  };
  form.Show();
  EXPECT_EQ(loaded, 2);
  EXPECT_EQ(unloaded, 1) << "the one whose showing is on";
  EXPECT_EQ(watch.alive, 0);
}

TEST_F(ErrorWindow, TheCloseBoxUnloadsTheFormAndItsReport) {
  form.ErrorMessage("text");
  watch.showing = [](ErrorWindowEvents& events) { events.closed(); };
  form.Show();
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_EQ(watch.alive, 0);
  EXPECT_EQ(form.ErrorMessage(), "");
  EXPECT_EQ(watch.made, 2);
}

TEST_F(ErrorWindow, EventsBehindTheUnloadingDoNothing) {
  watch.showing = [&](ErrorWindowEvents& events) {
    form.Unload();
    machine.journal->clear();
    events.activated();
    events.resized();
    events.clicked("ABORT");
  };
  form.Show();
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_EQ(form.Tag(), "");
}

TEST_F(ErrorWindow, AFactoryThatGivesNoWindowFailsTheLoading) {
  machine.services->createErrorWindow = [] { return std::unique_ptr<platform::ErrorWindow>(); };
  EXPECT_THAT(failureOf([&] { form.Load(); }), IsFailure(91, "Object variable or With block variable not set", ""));
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(ErrorWindow, OfAFormThatGoesWithItsThreadStillFindsTheServices) {
  bool found = false;
  watch.atEnd = [&] { found = !failureOf([] { static_cast<void>(globals::platform()); }); };
  globals::errorMessageForm().Load();
  globals::release();
  EXPECT_EQ(watch.alive, 0);
  EXPECT_TRUE(found);
  watch.atEnd = nullptr;
}

}  // namespace

}  // namespace mervane::tests
