#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "mervane/service_errors.h"
#include "support/globals.h"
#include "tests/support/fake_sheet.h"
#include "tests/support/fault_injector.h"
#include "tests/support/real_regular_expressions.h"
#include "tests/support/recorder.h"
#include "tests/support/test_machine.h"
#include "tools/m_tools.h"

namespace mervane::tests {

/// A machine and a sheet for the functions of mTools.
class ToolsTest : public ::testing::Test {
 protected:
  ToolsTest() { machine.services->regularExpressions = realRegularExpressions(); }

  /// Runs the statement and expects the one failure that mTools raises.
  template <class Statement>
  static void expectComponentFailure(const std::string& key, Statement&& statement) {
    try {
      statement();
      ADD_FAILURE() << "nothing was raised";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), eErr_ComponentFailure);
      EXPECT_EQ(failure.description(), "mTools component failure");
      EXPECT_EQ(failure.source(), "MervaneClass3.mTools." + key);
    }
  }

  TestMachine machine;
  FakeSheet excel;
};

}  // namespace mervane::tests
