#include "tests/conformance/host_conformance.h"

#include <algorithm>
#include <iterator>

#include "spreadsheet/member_table.h"

namespace mervane::tests {

namespace {

constexpr const char* leftOut = "NoMemberOfTheTableIsLeftOut";

std::vector<ConformanceCheck> checksFor(const HostKind& kind) {
  std::vector<ConformanceCheck> all;
  for (const auto topic : {&applicationChecks, &rangeChecks, &valueChecks, &cellActionChecks, &cellFormatChecks,
                           &chartChecks, &chartPartChecks, &seriesChecks, &axisChecks, &shapeChecks}) {
    std::ranges::copy(topic(), std::back_inserter(all));
  }
  std::erase_if(all, [&](const ConformanceCheck& check) { return check.saves && !kind.saves; });
  return all;
}

void run(const HostKind& kind, const ConformanceCheck& check, const std::shared_ptr<MemberRecord>& record) {
  SCOPED_TRACE(check.sentence);
  Walk walk(kind, kind.make(conformanceSheets()), record);
  const std::optional<Failure> failure = failureOf([&] { check.run(walk); });
  EXPECT_FALSE(failure.has_value()) << failure->number() << ": " << failure->description();
}

void expectEveryRow(const HostKind& kind, const MemberRecord& record) {
  const std::unique_ptr<HostUnderTest> host = kind.make(conformanceSheets());
  const auto table = sheet::memberTable();
  for (std::size_t i = 0; i < table.size(); ++i) {
    const sheet::MemberUse& use = table[i];
    const char* verb = use.access == sheet::Access::get ? "get " : use.access == sheet::Access::put ? "put " : "call ";
    const std::string row = verb + std::string(use.object) + "." + std::string(sheet::nameOf(use.member)) + "(" +
                            std::string(use.arguments) + ")";
    if (host->lacks(use.object, use.member)) {
      EXPECT_TRUE(record.refused.contains(i)) << row << ": nobody has seen that it is refused";
      EXPECT_FALSE(record.answered.contains(i)) << row << " is there after all";
    } else {
      EXPECT_TRUE(record.answered.contains(i)) << row << " was never answered";
    }
  }
}

}  // namespace

std::vector<ConformanceCase> conformanceOf(const HostKind& kind) {
  std::vector<ConformanceCase> cases;
  for (const ConformanceCheck& check : checksFor(kind)) cases.push_back({&kind, check});
  cases.push_back({&kind, {leftOut, nullptr, false}});
  return cases;
}

TEST_P(HostConformance, Holds) {
  const ConformanceCase& one = GetParam();
  const auto record = std::make_shared<MemberRecord>();
  if (one.check.run != nullptr) {
    run(*one.kind, one.check, record);
  } else {
    // Tests may run in programs of their own, so the record of all checks is made here anew.
    for (const ConformanceCheck& check : checksFor(*one.kind)) run(*one.kind, check, record);
    expectEveryRow(*one.kind, *record);
  }
  EXPECT_EQ(record->deviations, std::vector<std::string>());
}

}  // namespace mervane::tests
