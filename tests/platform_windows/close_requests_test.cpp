#include <gtest/gtest.h>
#include <windows.h>

#include "dialog/designed_items.h"
#include "dialog/frm_main.h"
#include "platform/windows/error_window.h"
#include "platform/windows/option_window.h"
#include "support/frm_error_message.h"
#include "support/globals.h"
#include "tests/platform_windows/freed_memory.h"
#include "tests/platform_windows/keyboard_user.h"
#include "tests/support/test_machine.h"

// Each window is asked to close, by its close box and by the end of the session, while it is shown and while it is not.
// Whoever owns a window that is not shown lets go of it within the request, and nothing of it may be touched behind
// that.

namespace mervane::tests {
namespace {

constexpr const wchar_t* optionWindow = L"MervaneOptionWindow";
constexpr const wchar_t* errorWindow = L"MervaneErrorWindow";

struct Request {
  UINT message;
  WPARAM word;
};
constexpr Request closeBox{WM_CLOSE, 0};
constexpr Request sessionEnd{WM_ENDSESSION, TRUE};

/// The one window of this thread with that class, shown or not; null for none.
HWND windowOfThread(const wchar_t* className) {
  HWND found = nullptr;
  while ((found = FindWindowExW(nullptr, found, className, nullptr)) != nullptr) {
    if (GetWindowThreadProcessId(found, nullptr) == GetCurrentThreadId()) return found;
  }
  return nullptr;
}

class CloseRequests : public testing::TestWithParam<Request> {
 protected:
  CloseRequests() {
    machine.services->createOptionWindow = [] { return windows::createOptionWindow(); };
    machine.services->createErrorWindow = [] { return windows::createErrorWindow(); };
  }

  /// Shows and asks for the closing from outside.
  template <class Form>
  void askWhileShown(Form& form, const wchar_t* className) {
    const KeyboardUser user(
        className, [this](KeyboardUser& one) { SendMessageW(one.window(), GetParam().message, GetParam().word, 0); });
    form.Show();
  }
  /// Asks a window that is not shown.
  static void ask(const wchar_t* className) {
    const HWND window = windowOfThread(className);
    ASSERT_NE(window, nullptr);
    const FreedMemory freed;
    SendMessageW(window, GetParam().message, GetParam().word, 0);
    EXPECT_TRUE(freed.isUntouched());
  }

  TestMachine machine;
};

INSTANTIATE_TEST_SUITE_P(Messages, CloseRequests, testing::Values(closeBox, sessionEnd), [](const auto& request) {
  return std::string(request.param.message == WM_CLOSE ? "CloseBox" : "SessionEnd");
});

TEST_P(CloseRequests, OfAHiddenOptionsDialogUnloadItAndItsWindowIsGone) {
  frmMain dialog;
  dialog.Inputs("Sheet1!A1:B9");
  ask(optionWindow);
  EXPECT_FALSE(dialog.IsLoaded());
  EXPECT_EQ(windowOfThread(optionWindow), nullptr);
  EXPECT_EQ(dialog.Tag(), GetParam().message == WM_CLOSE ? "CLOSE" : "");
  EXPECT_EQ(dialog.Inputs(), "") << "the next use loads it anew";
}

TEST_P(CloseRequests, OfAShownOptionsDialogEndTheShowingAndUnloadIt) {
  frmMain dialog;
  dialog.Inputs("Sheet1!A1:B9");
  askWhileShown(dialog, optionWindow);
  EXPECT_FALSE(dialog.IsLoaded());
  EXPECT_EQ(windowOfThread(optionWindow), nullptr);
  EXPECT_EQ(dialog.Tag(), GetParam().message == WM_CLOSE ? "CLOSE" : "");
}

TEST_P(CloseRequests, OfAHiddenDialogThatAloneKeepsItsOwnerLetBothGo) {
  struct Owner {
    frmMain dialog;
  };
  auto owner = std::make_shared<Owner>();
  const std::weak_ptr<Owner> kept = owner;
  (void)owner->dialog.Inputs();
  owner->dialog.Classifier(owner);
  owner.reset();
  ASSERT_FALSE(kept.expired());
  ask(optionWindow);
  EXPECT_TRUE(kept.expired());
  EXPECT_EQ(windowOfThread(optionWindow), nullptr);
}

TEST_P(CloseRequests, OfAHiddenReportUnloadItWithItsCloseBoxAlone) {
  frmErrorMessage form;
  form.Load();
  ask(errorWindow);
  const bool closed = GetParam().message == WM_CLOSE;
  EXPECT_EQ(form.IsLoaded(), !closed);
  EXPECT_EQ(windowOfThread(errorWindow) == nullptr, closed);
}

TEST_P(CloseRequests, OfAShownReportEndItWithoutAnAnswer) {
  frmErrorMessage form;
  form.Load();
  askWhileShown(form, errorWindow);  // The user closes it where the session's end leaves it up.
  EXPECT_EQ(form.Tag(), "");
  EXPECT_EQ(windowOfThread(errorWindow), nullptr);
}

TEST(FreedMemory, AWriteToWhatWasFreedIsSeen) {
  auto number = std::make_unique<int>(1);
  const volatile auto address = reinterpret_cast<std::uintptr_t>(number.get());
  const FreedMemory freed;
  number.reset();
  EXPECT_TRUE(freed.isUntouched());
  *reinterpret_cast<volatile int*>(address) = 2;  // NOLINT: kept by what is tested.
  EXPECT_FALSE(freed.isUntouched());
}

}  // namespace
}  // namespace mervane::tests
