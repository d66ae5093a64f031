#include <windows.h>

#include "platform/error_window.h"
#include "platform/windows/error_window.h"
#include "tests/platform_windows/keyboard_user.h"
#include "tests/windows_server/window_user.h"

// The failure report as one answers it by the keyboard, and what it tells a screen reader.

namespace mervane::tests {
namespace {

platform::OptionItem button(const char* key, const char* caption) {
  platform::OptionItem item;
  item.Key = key;
  item.Caption = caption;
  item.Width = 60 * platform::twipsPerPixel;
  return item;
}

class ReportKeys : public testing::Test, protected platform::ErrorWindowEvents {
 protected:
  void activated() override {
    title.Item(1).Caption = "An error occurred in MervaneClass";
    window->itemsChanged();
  }
  void resized() override {}
  void clicked(const std::string& key) override {
    events.push_back("clicked " + key);
    if (key != "MAIL") window->hide();
  }
  void closed() override { events.emplace_back("closed"); }

  void show(std::function<void(KeyboardUser&)> script) {
    window = windows::createErrorWindow();
    window->load("Error", title, buttons, *this);
    window->setMessage("Error: 91\r\nin the second line");
    {
      const KeyboardUser user(L"MervaneErrorWindow", std::move(script));
      window->show();
    }
    window.reset();
  }

  using Events = std::vector<std::string>;
  platform::OptionItems title{{button("TITLE", "An error has occured in ")}};
  platform::OptionItems buttons{{button("SPACER", ""), button("ABORT", "Abort"), button("RETRY", "Retry"),
                                 button("IGNORE", "Ignore"), button("MAIL", "Send to support")}};
  Events events;
  std::unique_ptr<platform::ErrorWindow> window;
};

HWND report(KeyboardUser& user) {
  return FindWindowExW(user.window(), nullptr, L"EDIT", nullptr);
}

TEST_F(ReportKeys, EnterPressesTheButtonThatHasTheKeyboard) {
  show([](KeyboardUser& user) { user.press(VK_RETURN); });
  show([](KeyboardUser& user) {
    user.press(VK_TAB);
    user.press(VK_RETURN);
  });
  EXPECT_EQ(events, (Events{"clicked ABORT", "clicked RETRY"}));
}

TEST_F(ReportKeys, EscapeClosesWithoutAnAnswer) {
  show([](KeyboardUser& user) {
    user.press(VK_ESCAPE);
    EXPECT_FALSE(user.isOpen());
  });
  EXPECT_EQ(events, Events{"closed"});
}

TEST_F(ReportKeys, TheLetterOfEachButtonPressesIt) {
  for (const wchar_t* caption : {L"Abort", L"Retry", L"Ignore"}) {
    show([&](KeyboardUser& user) { user.alt(controlNamed(user.window(), caption)); });
  }
  show([](KeyboardUser& user) {
    user.alt(controlNamed(user.window(), L"Send to support"));
    EXPECT_TRUE(user.isOpen());
  });
  EXPECT_EQ(events, (Events{"clicked ABORT", "clicked RETRY", "clicked IGNORE", "clicked MAIL", "closed"}));
}

TEST_F(ReportKeys, TabGoesThroughTheButtonsAndTheReportAndLeavesItAgain) {
  std::vector<std::wstring> stops;
  show([&](KeyboardUser& user) { stops = user.tabStops(); });
  EXPECT_EQ(stops, (std::vector<std::wstring>{L"Abort", L"Retry", L"Ignore", L"Send to support",
                                              L"An error occurred in MervaneClass"}));
}

TEST_F(ReportKeys, InTheReportEnterAnswersNothingAndEscapeClosesTheWindow) {
  show([](KeyboardUser& user) {
    for (int i = 0; i < 4; ++i) user.press(VK_TAB);
    EXPECT_EQ(user.focus(), report(user));
    user.press(VK_RETURN);
    EXPECT_TRUE(user.isOpen());
    user.press(VK_ESCAPE);
    EXPECT_FALSE(user.isOpen());
  });
  EXPECT_EQ(events, Events{"closed"});
}

TEST_F(ReportKeys, AScreenReaderIsToldTheTitleAsTheNameOfTheReport) {
  show([](KeyboardUser& user) {
    EXPECT_EQ(user.name(report(user)), L"An error occurred in MervaneClass");
    EXPECT_EQ(accessibleName(report(user)), L"An error occurred in MervaneClass");
    for (const wchar_t* caption : {L"Abort", L"Retry", L"Ignore", L"Send to support"}) {
      EXPECT_EQ(accessibleName(controlNamed(user.window(), caption)), caption);
    }
  });
}

}  // namespace
}  // namespace mervane::tests
