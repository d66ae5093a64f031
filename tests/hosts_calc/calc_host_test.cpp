#include "tests/conformance/host_conformance.h"
#include "tests/conformance/host_flow.h"
#include "tests/hosts_calc/calc_under_test.h"

namespace mervane::tests {

INSTANTIATE_TEST_SUITE_P(Calc, HostConformance, testing::ValuesIn(conformanceOf(calcKind())), sentenceOf);
INSTANTIATE_TEST_SUITE_P(Calc, HostFlow, testing::ValuesIn(flowOn(calcKind())), flowSentenceOf);

}  // namespace mervane::tests
