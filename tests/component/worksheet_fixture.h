#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/component/component_fixture.h"
#include "tests/support/fake_sheet.h"
#include "tests/support/real_regular_expressions.h"
#include "tests/support/recorder.h"

namespace mervane::tests {

/// A sheet with a header, five rows of two numbers in B2:C6, and a user of the dialog.
class WorksheetFlow : public ComponentTest {
 protected:
  static constexpr const char* valuesPath = R"(Software\Tarvik\MervaneCls3\values)";

  WorksheetFlow() {
    machine.services->regularExpressions = realRegularExpressions();
    excel.fill("A1", {{"Name", "Length", "Width"},
                      {"a", 1.0, 10.0},
                      {"b", 9.0, 90.0},
                      {"c", 2.0, 20.0},
                      {"d", 8.0, 80.0},
                      {"e", 5.0, 50.0}});
    classifier->ExcelApplication(excel.object());
  }

  /// One showing in which the user types these entries and presses "Clusterize".
  std::string clusterize(const std::map<std::string, std::string>& entries) {
    user->atNextShowing([&, entries](platform::HeadlessOptionWindow& window) {
      for (const auto& [key, text] : entries) EXPECT_TRUE(window.edit(key, text)) << key;
      window.press("CLASSIFY");
    });
    return classifier->ShowMainForm();
  }
  std::string clusterize() {
    return clusterize({{"INPUTS", "Sheet1!B2:C6"}, {"OUTPUTS", "E2"}, {"CLUSTERS", "2"}, {"EPOCHS", "2"}});
  }

  /// What the last refused check showed.
  std::string message() {
    if (machine.messageBox->shown.empty()) return "(nothing)";
    EXPECT_EQ(machine.messageBox->shown.back().buttons, platform::MessageBox::Buttons::ok);
    return machine.messageBox->shown.back().text;
  }

  /// Everything that was assigned on the sheet.
  std::vector<std::string> writes(const Recorder& recorder) {
    std::vector<std::string> found = recorder.callsWith("put ");
    std::erase_if(found, [](const std::string& call) { return call.find("ScreenUpdating") != std::string::npos; });
    return found;
  }

  FakeSheet excel;
};

}  // namespace mervane::tests
