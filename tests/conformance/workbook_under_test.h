#pragma once

#include <map>
#include <memory>
#include <string>

#include "hosts/workbook/workbook_host.h"
#include "tests/conformance/host_under_test.h"
#include "tests/hosts_workbook/fixture.h"

namespace mervane::tests {

/// The workbook host with a file that was packed for it.
class WorkbookUnderTest final : public HostUnderTest {
 public:
  explicit WorkbookUnderTest(const std::vector<MadeSheet>& sheets);

  [[nodiscard]] sheet::ObjectRef application() override { return host_->application(); }
  void reopen() override;
  [[nodiscard]] std::string selection() override;
  [[nodiscard]] bool showsDataLabels() override;

  [[nodiscard]] workbook::WorkbookHost& host() { return *host_; }
  /// The parts of the file as they would be saved now.
  [[nodiscard]] std::map<std::string, std::string> savedParts();

 private:
  workbook::tests::TemporaryFolder folder_;
  std::unique_ptr<workbook::WorkbookHost> host_;
  int saves_ = 0;
};

[[nodiscard]] const HostKind& workbookKind();

}  // namespace mervane::tests
