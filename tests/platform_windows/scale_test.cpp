#include <windows.h>

#include "dialog/designed_items.h"
#include "platform/windows/option_window.h"
#include "platform/windows/window_tools.h"
#include "tests/platform_windows/keyboard_user.h"

// Sizes on screens of other resolutions than that of the design.

namespace mervane::tests {
namespace {

using windows::Scale;

TEST(WindowScale, APixelOfTheDesignGrowsWithTheResolution) {
  EXPECT_EQ(Scale(96).pixels(100), 100);
  EXPECT_EQ(Scale(120).pixels(100), 125);
  EXPECT_EQ(Scale(144).pixels(100), 150);
  EXPECT_EQ(Scale(192).pixels(100), 200);
}

TEST(WindowScale, ATwipStaysAFixedPartOfAnInch) {
  EXPECT_EQ(Scale(96).fromTwips(1440.0F), 96);
  EXPECT_EQ(Scale(144).fromTwips(1440.0F), 144);
  EXPECT_EQ(Scale(96).twips(96), 1440.0F);
  EXPECT_EQ(Scale(144).twips(144), 1440.0F);
}

TEST(WindowScale, TheFontGrowsWithTheResolution) {
  const auto heightAt = [](int pixelsPerInch) {
    const windows::Font font(Scale(pixelsPerInch), false);
    LOGFONTW described{};
    GetObjectW(font.get(), sizeof described, &described);
    return described.lfHeight;
  };
  EXPECT_EQ(heightAt(96), -11);
  EXPECT_EQ(heightAt(192), -22);
}

class Silent final : public platform::OptionWindowEvents {
 public:
  bool edited(const std::string&, const std::string&) override { return true; }
  void chosen(const std::string&, const std::string&) override {}
  void browsed(const std::string&) override {}
  void clicked(const std::string&) override {}
  void buttonClicked(const std::string&) override {}
  void resized() override {}
  bool closeRequested(platform::UnloadMode) override { return true; }
};

struct Placed {
  std::vector<RECT> controls;  ///< against the client area
  std::vector<bool> isDropDown;
  SIZE client;
  float listTwips;
};

Placed placedAt(int pixelsPerInch) {
  const platform::OptionItems options = dialog::designedOptions();
  const platform::OptionItems buttons = dialog::designedButtons();
  Silent silent;
  const auto window = windows::createOptionWindowFor(pixelsPerInch);
  window->load("Mervane Kelvash", options, buttons, silent);
  Placed placed{{}, {}, {}, window->listWidth()};
  {
    const KeyboardUser user(L"MervaneOptionWindow", [&](KeyboardUser& reader) {
      RECT client{};
      GetClientRect(reader.window(), &client);
      placed.client = {client.right, client.bottom};
      for (const HWND control : controlsOf(reader.window())) {
        RECT place{};
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, reader.window(), reinterpret_cast<POINT*>(&place), 2);
        placed.controls.push_back(place);
        wchar_t className[32] = {};
        GetClassNameW(control, className, 32);
        placed.isDropDown.push_back(lstrcmpiW(className, L"COMBOBOX") == 0);
      }
    });
    window->show();
  }
  return placed;
}

TEST(WindowScale, AtHalfAsManyPixelsAgainTheWholeLayoutIsOneAndAHalfTimesAsLarge) {
  const Placed design = placedAt(96);
  const Placed large = placedAt(144);
  EXPECT_EQ(design.client.cx * 3 / 2, large.client.cx);
  EXPECT_EQ(design.client.cy * 3 / 2, large.client.cy);
  // The list's frame of two pixels is the system's and stays as it is.
  constexpr double frame = 2.5;
  EXPECT_NEAR(design.listTwips, large.listTwips, 15.0F);
  ASSERT_GT(design.controls.size(), 25U);
  ASSERT_EQ(design.controls.size(), large.controls.size());
  for (std::size_t i = 0; i < design.controls.size(); ++i) {
    const RECT& before = design.controls[i];
    const RECT& after = large.controls[i];
    EXPECT_NEAR(static_cast<double>(before.left) * 1.5, static_cast<double>(after.left), frame) << i;
    EXPECT_NEAR(static_cast<double>(before.top) * 1.5, static_cast<double>(after.top), frame) << i;
    EXPECT_NEAR(static_cast<double>(before.right) * 1.5, static_cast<double>(after.right), frame) << i;
    // A closed drop-down is as high as its font asks for.
    const double slack = design.isDropDown[i] ? 3.0 * frame : frame;
    EXPECT_NEAR(static_cast<double>(before.bottom) * 1.5, static_cast<double>(after.bottom), slack) << i;
  }
}

TEST(WindowScale, ASizeThatIsSetFromOutsideIsAppliedAsItStandsAndOnlyAUserIsKeptFromASmallerOne) {
  const platform::OptionItems options = dialog::designedOptions();
  const platform::OptionItems buttons = dialog::designedButtons();
  Silent silent;
  const auto window = windows::createOptionWindowFor(96);
  window->load("Mervane Kelvash", options, buttons, silent);
  window->setMeasure(platform::WindowMeasure::width, 1500.0F);
  window->setMeasure(platform::WindowMeasure::height, 600.0F);
  EXPECT_EQ(window->measure(platform::WindowMeasure::width), 1500.0F);
  EXPECT_EQ(window->measure(platform::WindowMeasure::height), 600.0F);

  const HWND handle = FindWindowW(L"MervaneOptionWindow", nullptr);
  MINMAXINFO limits{};
  SendMessageW(handle, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_EQ(limits.ptMinTrackSize.x, 260);
  EXPECT_EQ(limits.ptMinTrackSize.y, 150);
}

}  // namespace
}  // namespace mervane::tests
