#include "support/frm_error_message.h"

#include <gtest/gtest.h>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "platform/headless/headless_error_window.h"
#include "tests/support/test_machine.h"

namespace mervane::tests {

using platform::HeadlessErrorWindow;
using View = HeadlessErrorWindow::View;

class ErrorMessageForm : public testing::Test {
 protected:
  ErrorMessageForm() {
    machine.services->createErrorWindow = platform::headlessErrorWindows([this](View& view) {
      ++showings;
      if (act) act(view);
    });
  }

  /// The order of use that the error handler keeps; the answer is the key of the pressed button.
  std::string report(const std::string& text, const std::string& mail, HeadlessErrorWindow::Reader reader) {
    act = std::move(reader);
    form.Load();
    form.ErrorMessage(text);
    form.SupportMail(mail);
    form.Show();
    std::string answer = form.Tag();
    form.Unload();
    return answer;
  }

  TestMachine machine;
  int showings = 0;
  HeadlessErrorWindow::Reader act;
  frmErrorMessage form;
};

TEST_F(ErrorMessageForm, TheWindowShowsTheReportTitleAndButtons) {
  (void)report("what happened\r\n", "help@example.org", [](View& view) {
    EXPECT_EQ(view.report(), "what happened\r\n");
    ASSERT_EQ(view.title().Count(), 1);
    EXPECT_EQ(view.title().Item(1).Caption, "An error occurred in MervaneClass");
    const char* keys[] = {"SPACER", "ABORT", "RETRY", "IGNORE", "MAIL"};
    const char* captions[] = {"", "Abort", "Retry", "Ignore", "Send to support"};
    const char* images[] = {"", "abort", "retry", "ignore", "support"};
    ASSERT_EQ(view.buttons().Count(), 5);
    for (std::int32_t i = 1; i <= 5; ++i) {
      EXPECT_EQ(view.buttons().Item(i).Key, keys[i - 1]);
      EXPECT_EQ(view.buttons().Item(i).Caption, captions[i - 1]);
      EXPECT_EQ(view.buttons().Item(i).imageKey, images[i - 1]);
      EXPECT_EQ(view.buttons().Item(i).height, 22);
    }
    EXPECT_EQ(view.title().Item("TITLE").imageKey, "icon");
    EXPECT_EQ(view.title().Item("TITLE").height, 38);
  });
}

TEST_F(ErrorMessageForm, TheDesignCaptionIsSpeltOtherwise) {
  form.Load();
  EXPECT_EQ(form.suiTitle().Item("TITLE").Caption, "An error has occured in ");
}

TEST_F(ErrorMessageForm, EveryButtonButTheMailIsAnAnswer) {
  for (const char* key : {"ABORT", "RETRY", "IGNORE", "SPACER"}) {
    EXPECT_EQ(report("text", "help@example.org", [key](View& view) { view.click(key); }), key);
  }
}

TEST_F(ErrorMessageForm, TheCloseBoxLeavesNoAnswer) {
  EXPECT_EQ(report("text", "", [](View&) {}), "");
  EXPECT_FALSE(form.IsLoaded());
  // Also where an earlier showing was answered.
  EXPECT_EQ(report("text", "", [](View& view) { view.click("ABORT"); }), "ABORT");
  EXPECT_EQ(report("text", "", [](View&) {}), "");
}

TEST_F(ErrorMessageForm, WithoutAnAddressTheMailButtonIsGone) {
  (void)report("text", "", [](View& view) {
    EXPECT_EQ(view.buttons().Count(), 4);
    EXPECT_FALSE(view.buttons().Contains("MAIL"));
  });
  // It is back where an address is known.
  (void)report("text", "help@example.org", [](View& view) { EXPECT_TRUE(view.buttons().Contains("MAIL")); });
}

TEST_F(ErrorMessageForm, EveryReturnToTheWindowBeepsOnceMore) {
  (void)report("text", "", [&](View& view) {
    EXPECT_EQ(machine.screen->beeps, 1);
    view.comeBack();
    view.comeBack();
    EXPECT_EQ(machine.screen->beeps, 3);
    EXPECT_EQ(view.buttons().Count(), 4);
  });
}

TEST_F(ErrorMessageForm, TheSpacerCentresTheButtons) {
  // All items: 3 + 57 + 57 + 63 + 115 pixels are 4425 twips; without the mail button 2700.
  (void)report("text", "help@example.org", [](View& view) {
    EXPECT_EQ(view.buttons().Item("SPACER").Width, (4980 - 4425 + 45 - 90) / 2);
    view.resizeBar(8000.0F);
    EXPECT_EQ(view.buttons().Item("SPACER").Width, (8000 - 4380 - 90) / 2);
    view.resizeBar(8001.0F);
    EXPECT_EQ(view.buttons().Item("SPACER").Width, 1765);  // 3531 halves to 1765.5, and the fraction goes.
  });
  (void)report("text", "",
               [](View& view) { EXPECT_EQ(view.buttons().Item("SPACER").Width, (4980 - 2700 + 45 - 90) / 2); });
}

TEST_F(ErrorMessageForm, ANarrowWindowGivesTheSpacerItsMinimum) {
  (void)report("text", "help@example.org", [](View& view) {
    for (const float width : {0.0F, 1000.0F, 4380.0F + 90.0F + 89.0F}) {
      view.resizeBar(width);
      EXPECT_EQ(view.buttons().Item("SPACER").Width, 45) << width;
    }
    view.resizeBar(4380.0F + 90.0F + 92.0F);
    EXPECT_EQ(view.buttons().Item("SPACER").Width, 46);
  });
}

TEST_F(ErrorMessageForm, AFractionOfATwipRoundsToTheEvenNeighbour) {
  (void)report("text", "help@example.org", [](View& view) {
    view.resizeBar(4380.0F + 90.0F + 201.5F);  // 201.5 is 202, half of it 101.
    EXPECT_EQ(view.buttons().Item("SPACER").Width, 101);
    view.resizeBar(4380.0F + 90.0F + 200.5F);  // 200.5 is 200.
    EXPECT_EQ(view.buttons().Item("SPACER").Width, 100);
  });
}

TEST_F(ErrorMessageForm, ABarThatCannotBeMeasuredGivesTheSpacerItsMinimum) {
  /// Its bar cannot be measured at the second asking.
  class NoBar final : public platform::ErrorWindow {
   public:
    void load(const std::string&, const platform::OptionItems&, const platform::OptionItems& buttons,
              platform::ErrorWindowEvents& events) override {
      buttons_ = &buttons;
      events_ = &events;
    }
    void itemsChanged() override {}
    void setMessage(const std::string&) override {}
    void show() override {
      events_->activated();
      events_->resized();
      EXPECT_GT(buttons_->Item("SPACER").Width, 45);
      events_->resized();
      EXPECT_EQ(buttons_->Item("SPACER").Width, 45);
      events_->clicked("RETRY");
    }
    void hide() override {}
    [[nodiscard]] float barWidth() const override {
      if (++askings_ > 1) raise(runtime::objectNotSet);
      return 4980.0F;
    }

   private:
    const platform::OptionItems* buttons_ = nullptr;
    platform::ErrorWindowEvents* events_ = nullptr;
    mutable int askings_ = 0;
  };
  machine.services->createErrorWindow = [] { return std::make_unique<NoBar>(); };
  EXPECT_EQ(report("text", "a@b", nullptr), "RETRY");
}

TEST_F(ErrorMessageForm, TheMailCarriesTheReportAndLeavesTheDialogUp) {
  EXPECT_EQ(report("3/14/2005\r\n\tError: 13\r\n\r\nEnd", "help@example.org",
                   [&](View& view) {
                     view.click("MAIL");
                     view.click("MAIL");
                     EXPECT_EQ(machine.mail->urls.size(), 2U);
                     view.click("ABORT");
                   }),
            "ABORT");
  EXPECT_EQ(machine.mail->urls.front(),
            "mailto:help@example.org?subject=An error occurred in MervaneClass&body="
            "%0A%0A--------------------%0A"
            "3/14/2005%0A%09Error: 13%0A%0AEnd"
            "%0A--------------------");
}

TEST_F(ErrorMessageForm, PercentAmpersandAndALoneLineFeedGoIntoTheUrlUnchanged) {
  (void)report("100% & more\nline\rend\r\n", "a@b", [](View& view) { view.click("MAIL"); });
  ASSERT_EQ(machine.mail->urls.size(), 1U);
  EXPECT_NE(machine.mail->urls[0].find("%0A100% & more\nline\rend%0A%0A----"), std::string::npos)
      << machine.mail->urls[0];
}

TEST_F(ErrorMessageForm, AMailProgramThatCannotBeStartedEndsWithoutAWord) {
  machine.mail->script.failAlways();
  EXPECT_EQ(report("text", "a@b",
                   [](View& view) {
                     view.click("MAIL");
                     view.click("RETRY");
                   }),
            "RETRY");
}

TEST_F(ErrorMessageForm, ABellThatFailsIsSkipped) {
  machine.screen->script.failAlways();
  EXPECT_EQ(report("text", "", [](View& view) { view.click("IGNORE"); }), "IGNORE");
}

TEST_F(ErrorMessageForm, AMachineWithoutBellOrMailShowsTheReportAllTheSame) {
  machine.services->screen = nullptr;
  machine.services->mail = nullptr;
  EXPECT_EQ(report("text", "a@b",
                   [](View& view) {
                     EXPECT_EQ(view.title().Item(1).Caption, "An error occurred in MervaneClass");
                     view.click("MAIL");
                     view.click("RETRY");
                   }),
            "RETRY");
}

TEST_F(ErrorMessageForm, UnloadingLosesTheReportAndKeepsTheAddress) {
  (void)report("text", "a@b", [](View& view) { view.click("ABORT"); });
  EXPECT_EQ(form.Tag(), "");
  EXPECT_EQ(form.ErrorMessage(), "");  // This loads the form again.
  EXPECT_TRUE(form.IsLoaded());
  act = [&](View& view) {
    EXPECT_TRUE(view.buttons().Contains("MAIL"));
    view.click("MAIL");
  };
  form.Show();
  EXPECT_EQ(machine.mail->urls.size(), 1U);
}

TEST_F(ErrorMessageForm, AShownFormCannotBeShownAgain) {
  EXPECT_EQ(report("text", "",
                   [&](View& view) {
                     if (showings == 1) {
                       EXPECT_THROW(form.Show(), Failure);
                     }
                     view.click("RETRY");
                   }),
            "RETRY");
  EXPECT_EQ(showings, 1);
}

TEST_F(ErrorMessageForm, UnloadingFromCodeEndsTheShowing) {
  EXPECT_EQ(report("text", "",
                   [&](View& view) {
                     form.Unload();
                     view.click("ABORT");  // Nobody hears it.
                   }),
            "");
}

TEST_F(ErrorMessageForm, WithoutAWindowFactoryLoadingFails) {
  machine.services->createErrorWindow = nullptr;
  EXPECT_THROW(form.Load(), Failure);
  EXPECT_FALSE(form.IsLoaded());
}

}  // namespace mervane::tests
