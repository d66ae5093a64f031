#pragma once

#include <memory>

#include "tests/conformance/workbook_under_test.h"

namespace mervane::tests {

/// The workbook host behind late-bound objects: what a client of automation sees of a spreadsheet application.
class AutomationUnderTest final : public HostUnderTest {
 public:
  explicit AutomationUnderTest(const std::vector<MadeSheet>& sheets);

  [[nodiscard]] sheet::ObjectRef application() override { return application_; }
  void reopen() override;
  [[nodiscard]] std::string selection() override { return book_.selection(); }
  [[nodiscard]] bool showsDataLabels() override { return book_.showsDataLabels(); }

 private:
  WorkbookUnderTest book_;
  sheet::ObjectRef application_;
};

[[nodiscard]] const HostKind& automationKind();

}  // namespace mervane::tests
