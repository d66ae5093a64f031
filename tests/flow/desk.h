#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/competitive_network.h"
#include "hosts/workbook/workbook_host.h"
#include "mervane/classifier3.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "platform/headless/headless_error_window.h"
#include "platform/headless/headless_option_window.h"
#include "platform/posix/regular_expressions.h"
#include "platform/posix/sqlite_key_store.h"
#include "tests/support/test_machine.h"

namespace mervane::tests {

/// A folder that is gone when the test is over.
class DeskFolder {
 public:
  DeskFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "mervane-flow-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  ~DeskFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  DeskFolder(const DeskFolder&) = delete;
  DeskFolder& operator=(const DeskFolder&) = delete;
  [[nodiscard]] std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

/// The application of a workbook host for as long as the workbook's file is where it was.
class ApplicationOfFile final : public sheet::Object {
 public:
  ApplicationOfFile(sheet::ObjectRef inner, std::filesystem::path file)
      : inner_(std::move(inner)), file_(std::move(file)) {}
  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override {
    if (!std::filesystem::exists(file_)) throw Failure(runtime::applicationDefined.number, "The workbook has gone");
    return inner_->invoke(access, member, arguments);
  }

 private:
  sheet::ObjectRef inner_;
  std::filesystem::path file_;
};

/// A user at a machine: a copy of the iris workbook, a settings store on the disk, and windows that nobody sees.
class Desk {
 public:
  Desk() {
    std::filesystem::copy_file(MERVANE_EXAMPLES "/iris.xlsx", file);
    book = workbook::WorkbookHost::open(file);
    machine.services->keyStore = std::make_shared<posix::SqliteKeyStore>(
        (folder / "settings.db").string(), [](const std::string& trouble) { ADD_FAILURE() << trouble; });
    machine.services->regularExpressions = std::make_shared<posix::RegularExpressions>();
    machine.services->createOptionWindow = platform::headlessOptionWindows(user);
    machine.services->createErrorWindow =
        platform::headlessErrorWindows([this](platform::HeadlessErrorWindow::View& view) {
          reports.push_back(view.report());
          if (atReport) atReport(view);
        });
  }

  /// A new component with a new dialog, on the open workbook.
  [[nodiscard]] std::shared_ptr<Classifier3> newComponent() const {
    auto classifier = Classifier3::create({.createEngine = [] { return std::make_shared<CompetitiveNetwork>(); }});
    classifier->ExcelApplication(std::make_shared<ApplicationOfFile>(book->application(), file));
    return classifier;
  }

  /// What a host does around the dialog: has ranges picked until it is closed.
  /// @return the results of ShowMainForm
  static std::vector<std::string> playLoop(Classifier3& classifier) {
    std::vector<std::string> results;
    do {
      results.push_back(classifier.ShowMainForm());
      if (results.back() == "INPUTS") classifier.CellInputs("Iris!B2:E151");
      if (results.back() == "OUTPUTS") classifier.CellOutputs("Iris!G2");
    } while (results.back() != "CLOSE" && results.size() < 10);
    return results;
  }

  TestMachine machine;
  DeskFolder folder;
  std::filesystem::path file = folder / "iris.xlsx";
  std::unique_ptr<workbook::WorkbookHost> book;
  std::shared_ptr<platform::HeadlessUser> user = std::make_shared<platform::HeadlessUser>();
  std::vector<std::string> reports;
  std::function<void(platform::HeadlessErrorWindow::View&)> atReport;
};

}  // namespace mervane::tests
