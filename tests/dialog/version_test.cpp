#include "mervane/version.h"

#include <gtest/gtest.h>

#include <string>

namespace mervane::tests {

TEST(Version, TheHeaderAndTheProjectTellTheSameNumbers) {
  const std::string project = MERVANE_PROJECT_VERSION;
  EXPECT_EQ(project, std::to_string(version::major) + "." + std::to_string(version::minor) + "." +
                         std::to_string(version::revision));
}

TEST(Version, BothWrittenFormsHoldTheSameNumbers) {
  EXPECT_EQ(std::string(version::fileVersion), std::to_string(version::major) + "." + std::to_string(version::minor) +
                                                   ".0." + std::to_string(version::revision));
  EXPECT_STREQ(version::text, "3.00.0057");
}

}  // namespace mervane::tests
