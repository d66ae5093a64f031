#include "tests/conformance/host_flow.h"

namespace mervane::tests {

std::vector<FlowCase> flowOn(const HostKind& kind) {
  std::vector<FlowCase> cases;
  for (const auto topic : {&workedExampleChecks, &flowOptionChecks, &flowChartChecks, &flowRefusalChecks}) {
    for (const FlowCheck& check : topic()) {
      if (kind.saves || !check.saves) cases.push_back({&kind, check});
    }
  }
  return cases;
}

TEST_P(HostFlow, Holds) {
  const FlowCase& one = GetParam();
  const auto record = std::make_shared<MemberRecord>();
  {
    FlowDesk desk(*one.kind, record);
    const std::optional<Failure> failure = failureOf([&] { one.check.run(desk); });
    EXPECT_FALSE(failure.has_value()) << failure->number() << ": " << failure->description();
  }
  EXPECT_EQ(record->deviations, std::vector<std::string>()) << "a run asks for nothing beyond the table";
}

}  // namespace mervane::tests
