#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dialog/frm_main.h"
#include "mervane/convert.h"
#include "mervane/service_errors.h"
#include "platform/headless/headless_error_window.h"
#include "platform/headless/headless_option_window.h"
#include "support/globals.h"
#include "tests/support/test_machine.h"

namespace mervane::tests {

/// A dialog on a machine of doubles, used by a scripted user. Failure reports are answered by `answers`, in order,
/// and by Abort when those are used up.
class DialogTest : public testing::Test {
 protected:
  static constexpr const char* valuesPath = R"(Software\Tarvik\MervaneCls3\values)";
  static constexpr const char* windowPath = R"(Software\Tarvik\MervaneCls3\window)";

  DialogTest() {
    machine.services->createOptionWindow = platform::headlessOptionWindows(user);
    machine.services->createErrorWindow =
        platform::headlessErrorWindows([this](platform::HeadlessErrorWindow::View& view) {
          reports.push_back(view.report());
          if (onReport) onReport();
          std::string answer = "ABORT";
          if (!answers.empty()) {
            answer = answers.front();
            answers.erase(answers.begin());
          }
          view.click(answer);
        });
    // As the component's construction sets the handler up.
    globals::errorHandler().Init(ehaErrorForm, "Error Log.txt", true, false, tfLogFile, "Tracing Log.txt");
  }

  /// One showing in which the user does this.
  void showing(frmMain& form, platform::HeadlessUser::Act act) {
    user->atNextShowing(std::move(act));
    form.Show();
  }
  void showing(platform::HeadlessUser::Act act) { showing(dialog, std::move(act)); }

  const platform::OptionItem& item(const std::string& key) { return dialog.suiOptions().Item(key); }
  std::string shown(const std::string& key) { return textOf(item(key).Value); }
  static std::string textOf(const Variant& value) { return toText(value, globals::locale()); }

  TestMachine machine;
  std::shared_ptr<platform::HeadlessUser> user = std::make_shared<platform::HeadlessUser>();
  std::vector<std::string> reports;
  std::vector<std::string> answers;
  std::function<void()> onReport;
  frmMain dialog;
};

}  // namespace mervane::tests
