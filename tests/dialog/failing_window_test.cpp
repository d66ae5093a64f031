#include <gmock/gmock.h>

#include "tests/dialog/dialog_fixture.h"

namespace mervane::tests {

using platform::HeadlessOptionWindow;
using platform::WindowMeasure;
using testing::HasSubstr;

/// The dialog in a window that refuses one of its operations at one call.
class FailingWindow : public DialogTest {
 protected:
  struct Scripts {
    CallScript hide;
    CallScript measure;
    CallScript setMeasure;
    CallScript listWidth;
  };

  /// A headless window with a refusal before each operation.
  class Window final : public platform::OptionWindow {
   public:
    Window(std::unique_ptr<platform::OptionWindow> inner, Scripts& scripts)
        : inner_(std::move(inner)), scripts_(scripts) {}

    void load(const std::string& caption, const platform::OptionItems& options, const platform::OptionItems& buttons,
              platform::OptionWindowEvents& events) override {
      inner_->load(caption, options, buttons, events);
    }
    void itemsChanged() override { inner_->itemsChanged(); }
    void show() override { inner_->show(); }
    void hide() override {
      scripts_.hide.enter("hide");
      inner_->hide();
    }
    [[nodiscard]] float measure(WindowMeasure which) const override {
      scripts_.measure.enter("measure");
      return inner_->measure(which);
    }
    void setMeasure(WindowMeasure which, float twips) override {
      scripts_.setMeasure.enter("setMeasure");
      inner_->setMeasure(which, twips);
    }
    [[nodiscard]] float listWidth() const override {
      scripts_.listWidth.enter("listWidth");
      return inner_->listWidth();
    }

   private:
    std::unique_ptr<platform::OptionWindow> inner_;
    Scripts& scripts_;
  };

  FailingWindow() {
    machine.services->createOptionWindow = [this, make = platform::headlessOptionWindows(user)] {
      return std::make_unique<Window>(make(), scripts);
    };
  }

  std::size_t writes() const {
    std::size_t count = 0;
    for (const std::string& entry : machine.journal->entries()) {
      if (entry.starts_with("keyStore.set ")) ++count;
    }
    return count;
  }

  // The last dialog of a test may outlive the scripts, but asks its window nothing at its end.
  Scripts scripts;
};

TEST_F(FailingWindow, ARetriedHidingRepeatsNothingBeforeIt) {
  struct Exit {
    const char* button;
    std::size_t writes;
    const char* procedure;
  };
  for (const Exit& one : {Exit{"CLASSIFY", 28, "Classify"}, Exit{"CLOSE", 4, "CloseForm"}}) {
    reports.clear();
    (void)dialog.Inputs();
    machine.journal->clear();
    scripts.hide.failCall(1);
    answers = {"RETRY"};
    showing([&](HeadlessOptionWindow& window) {
      window.press(one.button);
      EXPECT_FALSE(window.isShown()) << one.button;
    });
    EXPECT_EQ(dialog.Tag(), one.button);
    EXPECT_EQ(writes(), one.writes) << one.button;
    EXPECT_EQ(scripts.hide.calls(), 2) << one.button;
    ASSERT_EQ(reports.size(), 1U) << one.button;
    EXPECT_THAT(reports[0], HasSubstr(std::string("in MervaneClass3.frmMain.") + one.procedure + " at line 0"));
    EXPECT_THAT(reports[0], HasSubstr("MervaneClass3.frmMain.suiButtons_Click()"));
  }
}

TEST_F(FailingWindow, AnIgnoredOrAbortedHidingLeavesTheWindowUpWithTheTagSet) {
  for (const char* answer : {"IGNORE", "ABORT"}) {
    for (const char* button : {"CLASSIFY", "CLOSE"}) {
      scripts.hide.failCall(1);
      answers = {answer};
      showing([&](HeadlessOptionWindow& window) {
        window.press(button);
        EXPECT_TRUE(window.isShown()) << answer;
        EXPECT_EQ(dialog.Tag(), button);
        window.press(button);
        EXPECT_FALSE(window.isShown()) << answer;
      });
    }
  }
  EXPECT_EQ(reports.size(), 4U);
}

TEST_F(FailingWindow, AFailureInABrowseFallsToItsHandler) {
  for (const char* key : {"INPUTS", "OUTPUTS"}) {
    reports.clear();
    scripts.hide.failCall(1);
    answers = {"RETRY"};
    showing([&](HeadlessOptionWindow& window) {
      window.browse(key);
      EXPECT_FALSE(window.isShown());
    });
    EXPECT_EQ(dialog.Tag(), key);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_THAT(reports[0], HasSubstr("in MervaneClass3.frmMain.suiOptions_Browse at line 0"));
  }
}

TEST_F(FailingWindow, AnItemWhoseWidthCannotBeReckonedKeepsItAndTheNextOnesFollow) {
  const std::vector<std::string> inOrder = {"INPUTS",
                                            "OUTPUTS",
                                            "CLUSTERS",
                                            "LEARNINGRATE",
                                            "EPOCHS",
                                            "INITIALWEIGHTS",
                                            "STARTLEARNINGRADIUS",
                                            "ACTIVATIONFUNCTION",
                                            "USECONVEX",
                                            "SCALEVALUES"};
  showing([&](HeadlessOptionWindow& window) {
    int failures = 0;
    for (int call = 1;; ++call) {
      std::vector<float> before;
      for (const std::string& key : inOrder) before.push_back(item(key).Width);
      scripts.listWidth.failCall(call);
      window.resize(window.measure(WindowMeasure::width) + 150.0F, 3000.0F);
      for (std::size_t i = 0; i < inOrder.size(); ++i) {
        const bool failed = static_cast<int>(i) + 1 == call;
        // An item that was left out once lags behind from then on; each turn still moves the others.
        EXPECT_EQ(item(inOrder[i]).Width != before[i], !failed) << inOrder[i] << " at " << call;
      }
      if (!scripts.listWidth.triggered()) break;
      ++failures;
    }
    EXPECT_EQ(failures, 10);
  });
  EXPECT_TRUE(reports.empty());
}

TEST_F(FailingWindow, AnEdgeThatCannotBeSetLeavesItAloneAndTheNextOnesFollow) {
  const std::pair<const char*, WindowMeasure> edges[] = {{"left", WindowMeasure::left},
                                                         {"top", WindowMeasure::top},
                                                         {"width", WindowMeasure::width},
                                                         {"height", WindowMeasure::height}};
  for (const auto& [key, which] : edges) machine.keyStore->putInteger(windowPath, key, 7000);
  for (CallScript* script : {&scripts.setMeasure, &scripts.measure}) {
    for (int call = 1; call <= 5; ++call) {
      script->failCall(call);
      frmMain form;
      (void)form.Inputs();
      EXPECT_EQ(script->triggered(), call <= 4);
      script->failCall(0);
      for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(form.measure(edges[i].second) == 7000.0F, i + 1 != call) << edges[i].first << " at " << call;
      }
    }
  }
  EXPECT_TRUE(reports.empty());
}

TEST_F(FailingWindow, AnEdgeThatCannotBeReadIsNotSavedAndTheOthersAre) {
  const char* edges[] = {"left", "top", "width", "height"};
  (void)dialog.Inputs();
  for (int call = 1; call <= 5; ++call) {
    machine.keyStore = std::make_shared<MemoryKeyStore>(machine.journal);
    machine.services->keyStore = machine.keyStore;
    scripts.measure.failCall(call);
    showing([](HeadlessOptionWindow& window) { window.press("CLOSE"); });
    EXPECT_EQ(dialog.Tag(), "CLOSE");
    EXPECT_EQ(scripts.measure.triggered(), call <= 4);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(machine.keyStore->integer(windowPath, edges[i]).has_value(), i + 1 != call) << edges[i];
    }
  }
  EXPECT_TRUE(reports.empty());
}

}  // namespace mervane::tests
