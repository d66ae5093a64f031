#pragma once

#include <gtest/gtest.h>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane {

/// Expects the statement to raise this run-time error, with its number and its text.
template <class Statement>
void expectRaises(const RuntimeError& error, Statement&& statement) {
  try {
    statement();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), error.number);
    EXPECT_EQ(failure.description(), error.description);
    EXPECT_EQ(failure.source(), "");
    return;
  }
  ADD_FAILURE() << "nothing was raised where \"" << error.description << "\" was due";
}

}  // namespace mervane
