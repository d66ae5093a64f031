#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "tests/conformance/host_under_test.h"
#include "tests/conformance/member_walk.h"
#include "tests/support/failure_matchers.h"

namespace mervane::tests {

/// A host with made sheets, followed through the table of members.
class Walk {
 public:
  Walk(const HostKind& kind, std::unique_ptr<HostUnderTest> host, std::shared_ptr<MemberRecord> record)
      : kind_(kind), record_(std::move(record)), host_(std::move(host)) {}

  [[nodiscard]] HostUnderTest& host() { return *host_; }
  [[nodiscard]] sheet::Application application() { return MemberWalk(host_->application(), record_).application(); }
  [[nodiscard]] sheet::Range range(const std::string& reference) { return application().Range(reference); }
  [[nodiscard]] sheet::Worksheet activeSheet() { return application().ActiveSheet(); }
  [[nodiscard]] Variant value(const std::string& cell) { return range(cell).Value(); }
  /// The values of the cells, row by row.
  [[nodiscard]] std::vector<Variant> values(const std::string& reference);
  [[nodiscard]] double tolerance() const noexcept { return kind_.tolerance; }

  /// What a property that is only written holds now.
  [[nodiscard]] Variant shown(const sheet::Proxy& object, sheet::member::Id member) {
    return host_->shown(MemberWalk::hostsOwn(object), member);
  }
  /// Expects the property to hold the value; a length may be off a little.
  void expectShown(const sheet::Proxy& object, sheet::member::Id member, const Variant& value);
  /// One property with the values that are assigned to it one after the other.
  struct Property {
    sheet::member::Id member;
    std::vector<Variant> values;
  };
  /// Assigns every value and expects it to be there afterwards; a property that the application lacks must refuse.
  void expectAssignable(const sheet::Proxy& object, const std::string& className,
                        const std::vector<Property>& properties);

  /// A chart that lies in the active sheet, 350 x 200 points, made from the cells in the way of a run.
  sheet::Chart embeddedChart(const std::string& source, std::int32_t type, std::int32_t plotBy);

 private:
  const HostKind& kind_;
  std::shared_ptr<MemberRecord> record_;
  std::unique_ptr<HostUnderTest> host_;
};

/// One sentence about hosts, and the test of it.
struct ConformanceCheck {
  const char* sentence;
  void (*run)(Walk& walk);
  bool saves = false;  ///< whether it needs a host that saves
};

/// The sheets that every check begins with: "Sheet1" is the table below, "Second's" holds 42 in A1.
///
///         A        B         C        D    E
///     1   Name     Length    Width         Kinds
///     2   a        1         10            true
///     3   b        9         90            2023-03-15, a date
///     4   c        2         20            #N/A
///     5   d        8         80            =B2+C2
///     6   e        5         50            a text with letters of two more scripts
[[nodiscard]] std::vector<MadeSheet> conformanceSheets();

[[nodiscard]] std::vector<ConformanceCheck> applicationChecks();
[[nodiscard]] std::vector<ConformanceCheck> rangeChecks();
[[nodiscard]] std::vector<ConformanceCheck> valueChecks();
[[nodiscard]] std::vector<ConformanceCheck> cellActionChecks();
[[nodiscard]] std::vector<ConformanceCheck> cellFormatChecks();
[[nodiscard]] std::vector<ConformanceCheck> chartChecks();
[[nodiscard]] std::vector<ConformanceCheck> chartPartChecks();
[[nodiscard]] std::vector<ConformanceCheck> seriesChecks();
[[nodiscard]] std::vector<ConformanceCheck> axisChecks();
[[nodiscard]] std::vector<ConformanceCheck> shapeChecks();

/// Expects the statement to be refused, with a text that says why.
template <class Statement>
void expectRefusal(Statement&& statement) {
  const std::optional<Failure> failure = failureOf(std::forward<Statement>(statement));
  ASSERT_TRUE(failure.has_value()) << "nothing was raised";
  EXPECT_NE(failure->number(), 0);
  EXPECT_FALSE(failure->description().empty());
}

}  // namespace mervane::tests
