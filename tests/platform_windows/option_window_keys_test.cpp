#include <windows.h>

#include <set>

#include "dialog/designed_items.h"
#include "platform/windows/option_window.h"
#include "tests/platform_windows/keyboard_user.h"
#include "tests/windows_server/window_user.h"

// The option window as one uses it by the keyboard, and what it tells a screen reader.

namespace mervane::tests {
namespace {

constexpr const wchar_t* optionWindow = L"MervaneOptionWindow";

class OptionKeys : public testing::Test, protected platform::OptionWindowEvents {
 protected:
  bool edited(const std::string& key, const std::string& text) override {
    events.push_back("edited " + key + " " + text);
    if (text == "bad") return false;
    options.Item(key).Value = text;
    window->itemsChanged();
    return true;
  }
  void chosen(const std::string& key, const std::string& caption) override {
    events.push_back("chosen " + key + " " + caption);
  }
  void browsed(const std::string& key) override { events.push_back("browsed " + key); }
  void clicked(const std::string& key) override { events.push_back("clicked " + key); }
  void buttonClicked(const std::string& key) override {
    events.push_back("button " + key);
    window->hide();
  }
  void resized() override {}
  bool closeRequested(platform::UnloadMode) override {
    events.push_back("close box");
    return true;
  }

  /// Shows the window to a user who does what the script says; what the window reports is in `events` afterwards.
  void show(std::function<void(KeyboardUser&)> script) {
    window = windows::createOptionWindow();
    window->load("Mervane Kelvash", options, buttons, *this);
    {
      const KeyboardUser user(optionWindow, std::move(script));
      window->show();
    }
    window.reset();
  }

  using Events = std::vector<std::string>;
  platform::OptionItems options = dialog::designedOptions();
  platform::OptionItems buttons = dialog::designedButtons();
  Events events;
  std::unique_ptr<platform::OptionWindow> window;
};

/// The field behind a caption.
HWND field(KeyboardUser& user, const wchar_t* caption) {
  return GetWindow(controlNamed(user.window(), caption), GW_HWNDNEXT);
}

TEST_F(OptionKeys, EnterInAFieldTakesTheEntryAndPressesClusterize) {
  show([](KeyboardUser& user) {
    user.alt(controlNamed(user.window(), L"Clusters:"));
    user.type(L"5");
    user.press(VK_RETURN);
  });
  EXPECT_EQ(events, (Events{"edited CLUSTERS 5", "button CLASSIFY"}));
}

TEST_F(OptionKeys, EnterOnARefusedEntryLeavesTheWindowUpWithTheEarlierValue) {
  show([](KeyboardUser& user) {
    user.alt(controlNamed(user.window(), L"Clusters:"));
    user.type(L"bad");
    user.press(VK_RETURN);
    EXPECT_TRUE(user.isOpen());
    EXPECT_EQ(textOfControl(field(user, L"Clusters:")), L"3");
  });
  EXPECT_EQ(events, (Events{"edited CLUSTERS bad", "close box"}));
}

TEST_F(OptionKeys, AClickOnARefusedEntryDoesNothingAndTheFieldHasTheKeyboardAgainWithTheEarlierValue) {
  options.Item("OUTPUTGROUP").Expanded = true;
  for (const wchar_t* clicked : {L"Clusterize", L"Close", L"Browse for Outputs", L"Use convex combination", L"Data"}) {
    for (void (KeyboardUser::*const click)(HWND) : {&KeyboardUser::click, &KeyboardUser::clickFast}) {
      events.clear();
      show([&](KeyboardUser& user) {
        user.alt(controlNamed(user.window(), L"Clusters:"));
        user.type(L"bad");
        (user.*click)(controlNamed(user.window(), clicked));
        EXPECT_TRUE(user.isOpen());
        EXPECT_EQ(textOfControl(field(user, L"Clusters:")), L"3");
        EXPECT_EQ(user.focus(), field(user, L"Clusters:"));
      });
      EXPECT_EQ(events, (Events{"edited CLUSTERS bad", "close box"})) << testing::PrintToString(clicked);
    }
  }
}

TEST_F(OptionKeys, TheLetterOfAButtonOnARefusedEntryDoesNothingEither) {
  show([&](KeyboardUser& user) {
    user.alt(controlNamed(user.window(), L"Clusters:"));
    user.type(L"bad");
    user.alt(controlNamed(user.window(), L"Clusterize"));
    EXPECT_TRUE(user.isOpen());
    EXPECT_EQ(user.focus(), field(user, L"Clusters:"));
  });
  EXPECT_EQ(events, (Events{"edited CLUSTERS bad", "close box"}));
}

TEST_F(OptionKeys, AClickAfterARefusedEntryWasMendedCounts) {
  show([&](KeyboardUser& user) {
    user.alt(controlNamed(user.window(), L"Clusters:"));
    user.type(L"bad");
    user.click(controlNamed(user.window(), L"Clusterize"));
    user.type(L"7");
    user.click(controlNamed(user.window(), L"Clusterize"));
  });
  EXPECT_EQ(events, (Events{"edited CLUSTERS bad", "edited CLUSTERS 7", "button CLASSIFY"}));
}

TEST_F(OptionKeys, EnterOnAButtonOrACheckBoxPressesThatOne) {
  show([](KeyboardUser& user) {
    user.press(VK_TAB);
    EXPECT_EQ(user.name(user.focus()), L"Browse for Inputs");
    user.press(VK_RETURN);
    user.alt(controlNamed(user.window(), L"Activation function:"));
    user.press(VK_TAB);
    user.press(VK_RETURN);
    for (int i = 0; i < 5; ++i) user.press(VK_TAB);
    EXPECT_EQ(user.name(user.focus()), L"Close");
    user.press(VK_RETURN);
  });
  EXPECT_EQ(events, (Events{"browsed INPUTS", "clicked USECONVEX", "button CLOSE"}));
}

TEST_F(OptionKeys, EscapeTakesAnEntryBackAndTheNextOnePressesClose) {
  show([](KeyboardUser& user) {
    user.alt(controlNamed(user.window(), L"Epochs:"));
    user.type(L"77");
    EXPECT_EQ(textOfControl(user.focus()), L"77");
    user.press(VK_ESCAPE);
    EXPECT_TRUE(user.isOpen());
    EXPECT_EQ(textOfControl(field(user, L"Epochs:")), L"100");
    user.press(VK_ESCAPE);
    EXPECT_FALSE(user.isOpen());
  });
  EXPECT_EQ(events, Events{"button CLOSE"});
}

TEST_F(OptionKeys, TabGoesThroughTheItemsInTheirOrderAndThenTheButtons) {
  options.Item("OUTPUTGROUP").Expanded = true;
  std::vector<std::wstring> stops;
  show([&](KeyboardUser& user) { stops = user.tabStops(); });
  EXPECT_EQ(stops, (std::vector<std::wstring>{L"Inputs:",
                                              L"Browse for Inputs",
                                              L"Outputs:",
                                              L"Browse for Outputs",
                                              L"Clusters:",
                                              L"Neural network parameters",
                                              L"Start learning rate:",
                                              L"Epochs:",
                                              L"Initial weights:",
                                              L"Start learning radius:",
                                              L"Activation function:",
                                              L"Use convex combination",
                                              L"Scale values",
                                              L"Set default values",
                                              L"Output formatting parameters",

                                              L"to one column",
                                              L"Set autofilter",
                                              L"Draw charts",
                                              L"Calculate averages",
                                              L"Calculate weighted averages",
                                              L"Calculate minimums",
                                              L"Calculate maximums",
                                              L"Calculate cluster weight",
                                              L"Set colors",
                                              L"Sort by cluster",
                                              L"Convert table to range",
                                              L"Clusterize",
                                              L"Close",
                                              L"Data"}));
}

TEST_F(OptionKeys, ThePairOfRadioItemsIsOneTabStopWithinWhichTheArrowsMove) {
  options.Item("OUTPUTGROUP").Expanded = true;
  show([](KeyboardUser& user) {
    user.alt(controlNamed(user.window(), L"Activation function:"));
    for (int i = 0; i < 5; ++i) user.press(VK_TAB);
    EXPECT_EQ(user.name(user.focus()), L"to one column");
    user.press(VK_UP);
    EXPECT_EQ(user.name(user.focus()), L"to multiple columns");
    user.press(VK_SPACE);
    user.press(VK_UP);
    EXPECT_EQ(user.name(user.focus()), L"to one column");
  });
  EXPECT_EQ(events, (Events{"clicked SPLITMULTIPLE", "close box"}));
}

TEST_F(OptionKeys, TabPassesOverTheItemsOfAClosedGroup) {
  options.Item("NNPARAMSGROUP").Expanded = false;
  std::vector<std::wstring> stops;
  show([&](KeyboardUser& user) { stops = user.tabStops(); });
  EXPECT_EQ(stops, (std::vector<std::wstring>{L"Inputs:", L"Browse for Inputs", L"Outputs:", L"Browse for Outputs",
                                              L"Clusters:", L"Neural network parameters",
                                              L"Output formatting parameters", L"Clusterize", L"Close", L"Data"}));
}

TEST_F(OptionKeys, TheLetterOfACaptionLeadsToItsFieldAndThatOfAButtonPressesIt) {
  int fields = 0;
  Events expected;
  show([&](KeyboardUser& user) {
    const std::pair<const wchar_t*, const char*> pressed[] = {{L"Data", "DATAGROUP"},
                                                              {L"Neural network parameters", "NNPARAMSGROUP"},
                                                              {L"Use convex combination", "USECONVEX"},
                                                              {L"Set default values", "DEFAULTS"},
                                                              {L"Output formatting parameters", "OUTPUTGROUP"}};
    for (const auto& [caption, key] : pressed) {
      user.alt(controlNamed(user.window(), caption));
      expected.push_back(std::string("clicked ") + key);
    }
    for (const wchar_t* caption : {L"Inputs:", L"Outputs:", L"Clusters:", L"Start learning rate:", L"Epochs:",
                                   L"Initial weights:", L"Start learning radius:", L"Activation function:"}) {
      const HWND label = controlNamed(user.window(), caption);
      user.alt(label);
      EXPECT_EQ(user.focus(), GetWindow(label, GW_HWNDNEXT)) << testing::PrintToString(std::wstring(caption));
      ++fields;
    }
    user.alt(controlNamed(user.window(), L"Clusterize"));
  });
  expected.emplace_back("button CLASSIFY");
  EXPECT_EQ(events, expected);
  EXPECT_EQ(fields, 8);
}

TEST_F(OptionKeys, TheButtonsHaveLettersOfTheirOwnAndTheOneOptionWithoutAFreeLetterSharesOne) {
  show([](KeyboardUser& user) {
    std::multiset<wchar_t> letters;
    for (const HWND control : controlsOf(user.window())) {
      if (markedLetter(control) != 0) letters.insert(markedLetter(control));
    }
    // Two buttons, three headers, eight captions, two check boxes and a command.
    EXPECT_EQ(letters.size(), 16U);
    EXPECT_EQ((std::set<wchar_t>{letters.begin(), letters.end()}).size(), 15U);
    for (const wchar_t* button : {L"Close", L"Clusterize"}) {
      EXPECT_EQ(letters.count(markedLetter(controlNamed(user.window(), button))), 1U);
    }
    EXPECT_EQ(letters.count(markedLetter(controlNamed(user.window(), L"Scale values"))), 2U);
    user.alt(controlNamed(user.window(), L"Close"));
  });
  EXPECT_EQ(events, Events{"button CLOSE"});
}

TEST_F(OptionKeys, AFieldThatTheKeyboardComesToIsSelectedSoThatTypingReplacesIt) {
  show([](KeyboardUser& user) {
    user.alt(controlNamed(user.window(), L"Epochs:"));
    user.type(L"250");
    user.press(VK_TAB);
    EXPECT_EQ(user.name(user.focus()), L"Initial weights:");
    user.type(L"0.4");
    user.press(VK_TAB);
  });
  EXPECT_EQ(events, (Events{"edited EPOCHS 250", "edited INITIALWEIGHTS 0.4", "close box"}));
}

TEST_F(OptionKeys, AScreenReaderIsToldTheNameOfEveryTabStop) {
  options.Item("OUTPUTGROUP").Expanded = true;
  std::vector<std::wstring> told;
  std::vector<std::wstring> seen;
  show([&](KeyboardUser& user) {
    for (const HWND control : controlsOf(user.window())) {
      if ((GetWindowLongW(control, GWL_STYLE) & WS_TABSTOP) == 0) continue;
      // Wine's library does not look for the caption of a drop-down as it does for that of an edit field.
      if (control == field(user, L"Activation function:")) continue;
      told.push_back(accessibleName(control));
      seen.push_back(user.name(control));
    }
  });
  EXPECT_EQ(told.size(), 28U);
  EXPECT_EQ(told, seen);
}

}  // namespace
}  // namespace mervane::tests
