#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tests/conformance/flow_desk.h"

namespace mervane::tests {

/// One check of the whole road on one kind of host.
struct FlowCase {
  const HostKind* kind = nullptr;
  FlowCheck check;
  friend void PrintTo(const FlowCase& one, std::ostream* out) { *out << one.check.sentence; }
};

/// @param kind has to live as long as the program.
[[nodiscard]] std::vector<FlowCase> flowOn(const HostKind& kind);

/// INSTANTIATE_TEST_SUITE_P(Workbook, HostFlow, testing::ValuesIn(flowOn(workbookKind())), flowSentenceOf);
class HostFlow : public testing::TestWithParam<FlowCase> {};

[[nodiscard]] inline std::string flowSentenceOf(const testing::TestParamInfo<FlowCase>& info) {
  return info.param.check.sentence;
}

}  // namespace mervane::tests
