#include <gtest/gtest-spi.h>

#include <functional>

#include "tests/conformance/host_conformance.h"
#include "tests/conformance/workbook_under_test.h"
#include "tests/support/object_decorator.h"

namespace mervane::tests {

namespace {

/// What a bad host makes of a call: its own answer, or nothing where it lets the call through.
using Badness = std::function<std::optional<Variant>(sheet::Access, sheet::member::Id, std::span<const Variant>)>;

class BadObject final : public ObjectDecorator {
 public:
  BadObject(sheet::ObjectRef inner, std::shared_ptr<const Badness> badness)
      : ObjectDecorator(std::move(inner)), badness_(std::move(badness)) {}
  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override {
    if (std::optional<Variant> own = (*badness_)(access, member, arguments)) return *own;
    Variant answer = forward(access, member, arguments);
    if (!answer.isObject() || answer.object() == nullptr) return answer;
    return Variant(sheet::ObjectRef(std::make_shared<BadObject>(answer.object(), badness_)));
  }

 private:
  std::shared_ptr<const Badness> badness_;
};

/// The workbook host spoilt.
class BadHost final : public HostUnderTest {
 public:
  explicit BadHost(Badness badness)
      : host_(conformanceSheets()), badness_(std::make_shared<const Badness>(std::move(badness))) {}
  [[nodiscard]] sheet::ObjectRef application() override {
    return std::make_shared<BadObject>(host_.application(), badness_);
  }
  void reopen() override { host_.reopen(); }
  [[nodiscard]] std::string selection() override { return host_.selection(); }
  [[nodiscard]] bool showsDataLabels() override { return host_.showsDataLabels(); }
  void useR1C1() override { host_.useR1C1(); }

 private:
  WorkbookUnderTest host_;
  std::shared_ptr<const Badness> badness_;
};

/// Whether the check finds fault with the host.
bool fails(const ConformanceCheck& check, const Badness& badness) {
  const auto record = std::make_shared<MemberRecord>();
  testing::TestPartResultArray results;
  bool raised = false;
  {
    const testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
    Walk walk(workbookKind(), std::make_unique<BadHost>(badness), record);
    try {
      check.run(walk);
    } catch (const std::exception&) {
      raised = true;
    }
  }
  if (raised || !record->deviations.empty()) return true;
  for (int i = 0; i < results.size(); ++i) {
    if (results.GetTestPartResult(i).failed()) return true;
  }
  return false;
}

/// Every check, without the one that counts the rows.
std::vector<ConformanceCheck> checks() {
  std::vector<ConformanceCheck> all;
  for (const ConformanceCase& one : conformanceOf(workbookKind())) {
    if (one.check.run != nullptr) all.push_back(one.check);
  }
  return all;
}

}  // namespace

TEST(ConformanceChecks, HoldForAHostThatIsNotSpoilt) {
  const Badness none = [](auto...) { return std::nullopt; };
  for (const ConformanceCheck& check : checks()) EXPECT_FALSE(fails(check, none)) << check.sentence;
}

TEST(ConformanceChecks, FailOnAHostThatRefusesEverything) {
  const Badness refusing = [](auto...) -> std::optional<Variant> { raise(runtime::applicationDefined); };
  for (const ConformanceCheck& check : checks()) EXPECT_TRUE(fails(check, refusing)) << check.sentence;
}

TEST(ConformanceChecks, FailOnAHostThatForgetsWhatIsAssigned) {
  for (const ConformanceCheck& check : checks()) {
    bool assigns = false;
    const Badness forgetful = [&](sheet::Access access, sheet::member::Id member,
                                  std::span<const Variant>) -> std::optional<Variant> {
      if (access != sheet::Access::put) return std::nullopt;
      // A chart's size is the setting of the scene and no part of what is checked.
      if (member != sheet::member::Width && member != sheet::member::Height && member != sheet::member::ChartType) {
        assigns = true;
      }
      return Variant();
    };
    const bool failed = fails(check, forgetful);
    EXPECT_TRUE(failed || !assigns) << check.sentence;
  }
}

TEST(ConformanceChecks, FailOnAHostThatCallsNothing) {
  for (const ConformanceCheck& check : checks()) {
    bool acts = false;
    const Badness idle = [&](sheet::Access access, sheet::member::Id member,
                             std::span<const Variant>) -> std::optional<Variant> {
      namespace ids = sheet::member;
      const bool isAction = member == ids::Sort || member == ids::AutoFilter || member == ids::AutoFit ||
                            member == ids::Select || member == ids::Delete || member == ids::ApplyDataLabels ||
                            member == ids::SetSourceData || member == ids::Location;
      if (access != sheet::Access::call || !isAction) return std::nullopt;
      // These two set the scene in most checks of charts.
      if (member != ids::SetSourceData && member != ids::Location) acts = true;
      return Variant();
    };
    const bool failed = fails(check, idle);
    EXPECT_TRUE(failed || !acts) << check.sentence;
  }
}

TEST(ConformanceChecks, FailOnAHostWhoseAnswersAreOfAnotherKind) {
  const auto wrong = [](sheet::member::Id wanted, const Variant& answer) -> Badness {
    return [=](sheet::Access access, sheet::member::Id member, std::span<const Variant>) -> std::optional<Variant> {
      if (access == sheet::Access::put || member != wanted) return std::nullopt;
      return answer;
    };
  };
  const auto anyFails = [](const Badness& badness) {
    return std::ranges::any_of(checks(), [&](const ConformanceCheck& check) { return fails(check, badness); });
  };
  EXPECT_TRUE(anyFails(wrong(sheet::member::Column, Variant(2.0))));
  EXPECT_TRUE(anyFails(wrong(sheet::member::AutoFilterMode, Variant(std::int32_t{0}))));
  EXPECT_TRUE(anyFails(wrong(sheet::member::Version, Variant(16.0))));
}

}  // namespace mervane::tests
