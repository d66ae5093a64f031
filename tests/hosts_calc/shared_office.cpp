#include "tests/hosts_calc/shared_office.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>

namespace mervane::tests {

namespace {

/// Owned by the framework, so that the office has ended before the statics of its libraries go.
class OfficeOfTheProgram final : public testing::Environment {
 public:
  static OfficeOfTheProgram*& only() {
    static OfficeOfTheProgram* only = nullptr;
    return only;
  }
  OfficeOfTheProgram() { only() = this; }
  void SetUp() override {
    // As the program does: a connection may still be written to while its office goes away.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    if (!calc::Office::isInstalled()) GTEST_SKIP() << "There is no LibreOffice to test with.";
    office_ = std::make_unique<calc::Office>();
  }
  void TearDown() override { office_.reset(); }
  calc::Office& office() { return *office_; }

 private:
  std::unique_ptr<calc::Office> office_;
};

const testing::Environment* const registered = testing::AddGlobalTestEnvironment(new OfficeOfTheProgram);

}  // namespace

calc::Office& sharedOffice() {
  static_cast<void>(registered);
  return OfficeOfTheProgram::only()->office();
}

}  // namespace mervane::tests
