#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "mervane/classifier3.h"
#include "platform/headless/headless_option_window.h"
#include "tests/conformance/conformance_checks.h"
#include "tests/support/recording_engine.h"
#include "tests/support/scripted_error_window.h"
#include "tests/support/test_machine.h"

namespace mervane::tests {

/// What the user sets in the dialog before pressing "Clusterize".
struct FlowOptions {
  std::string input = "Sheet1!B2:D6";
  std::string output = "F2";
  std::string clusters = "2";
  bool oneColumn = true;
  bool autofilter = false;
  bool charts = true;
  bool averages = true;
  bool weightedAverages = true;
  bool minimums = true;
  bool maximums = true;
  bool weights = true;
  bool colors = true;
  bool sort = false;
};

/// The component at work on a real host: a user of the dialog, windows that nobody sees, and a network that puts
/// each row where the test wants it.
class FlowDesk {
 public:
  FlowDesk(const HostKind& kind, std::shared_ptr<MemberRecord> record);
  ~FlowDesk();
  FlowDesk(const FlowDesk&) = delete;
  FlowDesk& operator=(const FlowDesk&) = delete;

  /// One showing of the dialog in which the user sets all this and presses "Clusterize".
  std::string clusterize(const FlowOptions& options = {});
  /// The cluster of each row by its value in the first column. The example begins as 1, 2, 1, 1, 2.
  void clusterOf(std::map<std::int32_t, std::int32_t> clusters) { clusters_ = std::move(clusters); }
  /// Puts the component on another application, such as this host behind a fault injector.
  void putOn(const sheet::ObjectRef& application) { classifier_->ExcelApplication(application); }
  /// What the failure dialog is answered with from now on; by default every report is answered by Abort.
  void answerReports(const std::string& key) { dialog_->answers.assign(1000, key); }
  /// Has the built-in network find the clusters instead.
  void useBuiltInNetwork();

  /// The message boxes that were shown, and the reports of failures.
  [[nodiscard]] std::vector<std::string> messages() const;
  [[nodiscard]] const std::vector<std::string>& reports() const { return dialog_->reports; }
  /// Expects that nothing was shown to the user.
  void expectQuiet() const;

  /// Looks at the host, beside the component.
  [[nodiscard]] Walk& look() { return walk_; }
  [[nodiscard]] std::vector<Variant> values(const std::string& reference) { return walk_.values(reference); }
  [[nodiscard]] std::vector<std::string> texts(const std::string& reference);
  /// The fill of each cell as a number of the palette; sheet::none where there is none.
  [[nodiscard]] std::vector<std::int32_t> fills(const std::string& reference);
  void expectBold(const std::string& reference, bool bold);
  void write(const std::string& cell, const Variant& value) { walk_.range(cell).Value(value); }

  /// The titles of the charts of the active sheet in their order; empty for one without.
  [[nodiscard]] std::vector<std::string> chartTitles();
  /// The chart or its shape by the title; raises where there is none.
  [[nodiscard]] sheet::Chart chart(const std::string& title);
  [[nodiscard]] sheet::Shape shape(const std::string& title);

 private:
  TestMachine machine_;
  std::shared_ptr<platform::HeadlessUser> user_ = std::make_shared<platform::HeadlessUser>();
  std::shared_ptr<ErrorDialogScript> dialog_ = std::make_shared<ErrorDialogScript>();
  std::map<std::int32_t, std::int32_t> clusters_ = {{1, 1}, {2, 2}, {4, 1}, {7, 1}, {6, 2}};
  Walk walk_;
  std::shared_ptr<Classifier3> classifier_;
};

/// "Sheet1" is the table below, "Other's" holds 4, 6 and 5 in A1:A3.
///
///         A        B         C        D
///     1   Name     Length    Width    Weight
///     2   a        1         10       100
///     3   b        2         20       200
///     4   c        4         40       400
///     5   d        7         70       700
///     6   e        6         60       600
[[nodiscard]] std::vector<MadeSheet> flowSheets();

/// One sentence about the road from the dialog to the sheet, and the test of it.
struct FlowCheck {
  const char* sentence;
  void (*run)(FlowDesk& desk);
  bool saves = false;  ///< whether it needs a host that saves
};

[[nodiscard]] std::vector<FlowCheck> workedExampleChecks();
[[nodiscard]] std::vector<FlowCheck> flowOptionChecks();
[[nodiscard]] std::vector<FlowCheck> flowChartChecks();
[[nodiscard]] std::vector<FlowCheck> flowRefusalChecks();

}  // namespace mervane::tests
