#include "tests/conformance/host_conformance.h"
#include "tests/conformance/host_flow.h"
#include "tests/conformance/workbook_under_test.h"

namespace mervane::tests {

INSTANTIATE_TEST_SUITE_P(Workbook, HostConformance, testing::ValuesIn(conformanceOf(workbookKind())), sentenceOf);
INSTANTIATE_TEST_SUITE_P(Workbook, HostFlow, testing::ValuesIn(flowOn(workbookKind())), flowSentenceOf);

}  // namespace mervane::tests
