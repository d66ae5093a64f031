#include "platform/posix/services.h"

#include <gtest/gtest.h>

#include <memory>

#include "dialog/frm_main.h"
#include "platform/headless/headless_error_window.h"
#include "platform/headless/headless_option_window.h"
#include "support/globals.h"
#include "tests/platform_posix/temporary_folder.h"

namespace mervane::tests {

/// The whole set of services, with the user's folders below a temporary one.
class Services : public testing::Test {
 protected:
  Services() {
    auto services = std::make_shared<platform::Services>(posix::makePosixServices(environment()));
    services->createOptionWindow = platform::headlessOptionWindows(user);
    services->createErrorWindow = platform::headlessErrorWindows({});
    globals::release();
    globals::platform(services);
  }
  ~Services() override { globals::release(); }

  posix::Environment environment() {
    return [this](const char* name) -> std::optional<std::string> {
      if (std::string(name) == "XDG_CONFIG_HOME") return folder.path().string();
      return std::nullopt;
    };
  }

  TemporaryFolder folder;
  std::shared_ptr<platform::HeadlessUser> user = std::make_shared<platform::HeadlessUser>();
};

TEST_F(Services, EveryServiceButTheWindowsIsThere) {
  const platform::Services services = posix::makePosixServices(environment());
  EXPECT_TRUE(services.keyStore && services.regularExpressions && services.messageBox && services.eventLog);
  EXPECT_TRUE(services.textFiles && services.clock && services.screen && services.mail && services.systemVersion);
  EXPECT_FALSE(services.createOptionWindow);
  EXPECT_FALSE(services.createErrorWindow);
}

TEST_F(Services, TheDialogIsRememberedInTheUsersConfigurationFolder) {
  {
    frmMain dialog;
    user->atNextShowing([](platform::HeadlessOptionWindow& window) {
      EXPECT_TRUE(window.edit("INPUTS", "Sheet1!A1:B9"));
      EXPECT_TRUE(window.edit("LEARNINGRATE", "0.125"));
      window.click("SPLITMULTIPLE");
      window.press("CLASSIFY");
    });
    dialog.Show();
  }
  EXPECT_TRUE(std::filesystem::exists(folder.file("mervane/settings.db")));
  auto services = std::make_shared<platform::Services>(posix::makePosixServices(environment()));
  services->createOptionWindow = platform::headlessOptionWindows(user);
  globals::release();
  globals::platform(services);
  frmMain again;
  EXPECT_EQ(again.Inputs(), "Sheet1!A1:B9");
  EXPECT_EQ(again.LearningRate(), "0.125");
  EXPECT_FALSE(again.SplitToOneColumn());
}

TEST_F(Services, ADialogThatOnlyLooksLeavesNoFile) {
  frmMain dialog;
  EXPECT_EQ(dialog.Clusters(), "3");
  EXPECT_FALSE(std::filesystem::exists(folder.file("mervane")));
}

}  // namespace mervane::tests
