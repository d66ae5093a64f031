#include "tests/conformance/host_conformance.h"
#include "tests/conformance/host_flow.h"
#include "tests/windows_flow/automation_under_test.h"

namespace mervane::tests {

INSTANTIATE_TEST_SUITE_P(Automation, HostConformance, testing::ValuesIn(conformanceOf(automationKind())), sentenceOf);
INSTANTIATE_TEST_SUITE_P(Automation, HostFlow, testing::ValuesIn(flowOn(automationKind())), flowSentenceOf);

}  // namespace mervane::tests
