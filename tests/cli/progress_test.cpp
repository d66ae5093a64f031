#include "cli/progress.h"

#include <gtest/gtest.h>

#include "cli/talk.h"
#include "cli/text_display.h"
#include "tests/cli/temporary_stream.h"

namespace mervane::cli {
namespace {

TEST(ProgressLine, TellsEpochRateAndTimeLeft) {
  // 40 epochs of 1,000 rows in 2 s: 50 ms each, and 60 epochs and the pass that assigns are left.
  EXPECT_EQ(progressLine({40, 100, 1000, 2.0}, 80),
            "[############..................] epoch 40/100, 20 k rows/s, 4 s left");
}

TEST(ProgressLine, HasNoFiguresBeforeTheFirstEpoch) {
  EXPECT_EQ(progressLine({0, 100, 1000, 0.0}, 80), "[..............................] epoch 0/100");
}

TEST(ProgressLine, LongTimesAreToldInMinutesAndHours) {
  EXPECT_NE(progressLine({1, 100, 10, 2.0}, 80).find("3 min 20 s left"), std::string::npos);
  EXPECT_NE(progressLine({1, 10000, 10, 2.0}, 80).find("5 h 33 min left"), std::string::npos);
}

TEST(ProgressLine, FitsEveryWidth) {
  for (std::size_t width = 1; width <= 200; ++width) {
    EXPECT_LT(displayWidth(progressLine({40, 100, 1000, 2.0}, width)), width + 1) << width;
  }
}

TEST(ProgressLine, NoEpochsAtAllAreDoneAtOnce) {
  EXPECT_EQ(progressLine({0, 0, 10, 0.0}, 80), "[##############################] epoch 0/0");
}

TEST(Progress, ShowsNothingOnAStreamThatIsNoTerminal) {
  const TemporaryStream stream;
  Talk talk(stream.file());
  Progress progress(talk, true, 10, 3);
  progress.begin();
  progress.epochDone(1);
  progress.end();
  EXPECT_EQ(stream.text(), "");
}

}  // namespace
}  // namespace mervane::cli
