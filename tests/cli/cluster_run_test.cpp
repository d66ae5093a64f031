#include "cli/cluster_run.h"

#include <gtest/gtest.h>

#include "cli/problem.h"
#include "cli/talk.h"
#include "mervane/classifier3.h"

namespace mervane::cli {
namespace {

TEST(InitialWeights, AreSetOnTheComponentItself) {
  Talk talk;
  ErrorAnswers answers(talk, {});
  const ServicesInUse services(commandLineServices(answers));
  const OwnedClassifier owned;
  NetworkOptions options;
  setInitialWeights(*owned, options);
  EXPECT_EQ((*owned).InitialWeights(), 0.3);
  options.initialWeights = 0.125;
  setInitialWeights(*owned, options);
  EXPECT_EQ((*owned).InitialWeights(), 0.125);
  options.initialWeights = 1.0;
  EXPECT_THROW(setInitialWeights(*owned, options), Problem);
  EXPECT_EQ((*owned).InitialWeights(), 0.125);
}

}  // namespace
}  // namespace mervane::cli
