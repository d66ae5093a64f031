#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>

#include "platform/option_item.h"
#include "platform/windows/error_window.h"
#include "platform/windows/window_tools.h"
#include "support/frm_error_message.h"
#include "tests/platform_windows/keyboard_user.h"
#include "tests/support/test_machine.h"

// Where the buttons of a failure report stand, as its rule for the spacer and the window place them together.

namespace mervane::tests {
namespace {

struct Bar {
  std::vector<RECT> buttons;  ///< against the client area, from left to right
  LONG client = 0;
};

Bar shownBar(const char* address, int narrower = 0) {
  TestMachine machine;
  machine.services->createErrorWindow = [] { return windows::createErrorWindow(); };
  frmErrorMessage form;
  form.Load();
  form.SupportMail(address);
  Bar bar;
  {
    const KeyboardUser user(L"MervaneErrorWindow", [&](KeyboardUser& one) {
      RECT frame{};
      GetWindowRect(one.window(), &frame);
      SetWindowPos(one.window(), nullptr, 0, 0, frame.right - frame.left - narrower, frame.bottom - frame.top,
                   SWP_NOMOVE | SWP_NOZORDER);
      RECT client{};
      GetClientRect(one.window(), &client);
      bar.client = client.right;
      for (const wchar_t* caption : {L"Abort", L"Retry", L"Ignore", L"Send to support"}) {
        const HWND button = controlNamed(one.window(), caption);
        if (button == nullptr) continue;
        RECT area{};
        GetWindowRect(button, &area);
        MapWindowPoints(nullptr, one.window(), reinterpret_cast<POINT*>(&area), 2);
        bar.buttons.push_back(area);
      }
    });
    form.Show();
  }
  return bar;
}

/// Free space before the first and behind the last button.
std::pair<LONG, LONG> freeSpace(const Bar& bar) {
  return {bar.buttons.front().left, bar.client - bar.buttons.back().right};
}

// The rule leaves 90 twips beside the buttons, all of them behind: half of it is the most that they may be off centre.
const int offCentre = windows::Scale().fromTwips(45.0F) + 3;

TEST(ReportBar, WithoutAnAddressThreeButtonsStandInTheMiddle) {
  const Bar bar = shownBar("");
  ASSERT_EQ(bar.buttons.size(), 3U);
  const auto [before, behind] = freeSpace(bar);
  EXPECT_LE(std::abs(before - behind), 2 * offCentre) << before << " and " << behind;
}

TEST(ReportBar, WithAnAddressFourButtonsStandInTheMiddleInsideTheWindow) {
  const Bar bar = shownBar("help@example.org");
  ASSERT_EQ(bar.buttons.size(), 4U);
  const auto [before, behind] = freeSpace(bar);
  EXPECT_GE(before, 0);
  EXPECT_GE(behind, 0);
  EXPECT_LE(std::abs(before - behind), 2 * offCentre) << before << " and " << behind;
}

TEST(ReportBar, ButtonsStandBesideEachOtherWithARoomBetweenThem) {
  const Bar bar = shownBar("help@example.org");
  for (std::size_t i = 1; i < bar.buttons.size(); ++i) {
    EXPECT_GT(bar.buttons[i].left, bar.buttons[i - 1].right);
    EXPECT_GT(bar.buttons[i].right, bar.buttons[i].left);
  }
}

TEST(ReportBar, InANarrowWindowTheButtonsBeginAtTheLeft) {
  const Bar bar = shownBar("help@example.org", 100);
  const windows::Scale scale;
  // The edge of the bar, and the narrowest spacer.
  EXPECT_EQ(bar.buttons.front().left, scale.fromTwips(60.0F) + scale.fromTwips(45.0F));
}

}  // namespace
}  // namespace mervane::tests
