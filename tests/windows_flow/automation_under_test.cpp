#include "tests/windows_flow/automation_under_test.h"

#include "hosts/automation/automation_object.h"
#include "tests/support/real_regular_expressions.h"
#include "tests/windows_flow/host_dispatch.h"

namespace mervane::tests {

namespace {

sheet::ObjectRef overAutomation(const sheet::ObjectRef& application) {
  return std::make_shared<automation::AutomationObject>(adopted(HostDispatch::wrap(application)).Get());
}

}  // namespace

AutomationUnderTest::AutomationUnderTest(const std::vector<MadeSheet>& sheets)
    : book_(sheets), application_(overAutomation(book_.application())) {}

void AutomationUnderTest::reopen() {
  book_.reopen();
  application_ = overAutomation(book_.application());
}

const HostKind& automationKind() {
  static const HostKind kind{
      "Automation",
      [](const std::vector<MadeSheet>& sheets) -> std::unique_ptr<HostUnderTest> {
        return std::make_unique<AutomationUnderTest>(sheets);
      },
      &realRegularExpressions,
  };
  return kind;
}

}  // namespace mervane::tests
