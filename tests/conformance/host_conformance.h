#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

/// One check on one kind of host.
struct ConformanceCase {
  const HostKind* kind = nullptr;
  ConformanceCheck check;
  friend void PrintTo(const ConformanceCase& one, std::ostream* out) { *out << one.check.sentence; }
};

/// All checks on one kind of host; the last one sees that they leave no row of the table of members out.
/// @param kind has to live as long as the program.
[[nodiscard]] std::vector<ConformanceCase> conformanceOf(const HostKind& kind);

/// INSTANTIATE_TEST_SUITE_P(Workbook, HostConformance, testing::ValuesIn(conformanceOf(workbookKind())), sentenceOf);
class HostConformance : public testing::TestWithParam<ConformanceCase> {};

[[nodiscard]] inline std::string sentenceOf(const testing::TestParamInfo<ConformanceCase>& info) {
  return info.param.check.sentence;
}

}  // namespace mervane::tests
