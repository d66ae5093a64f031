#include <gtest/gtest.h>

#include "tests/windows_server/client.h"

// A program of its own, because what it leaves behind cannot be cleaned up.

namespace mervane::tests {
namespace {

TEST(ForgottenUnload, AComponentInItsCircleWithTheDialogKeepsTheLibrary) {
  ServerLibrary library(MERVANE_SERVER);
  ASSERT_EQ(library.canUnloadNow(), S_OK);
  ComPtr<_Classifier3> object = newClassifier();
  object.Reset();
  EXPECT_EQ(library.canUnloadNow(), S_FALSE);
  CoFreeUnusedLibraries();
  EXPECT_EQ(library.canUnloadNow(), S_FALSE);
}

}  // namespace
}  // namespace mervane::tests
