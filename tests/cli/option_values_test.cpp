#include "cli/option_values.h"

#include <gtest/gtest.h>

#include "tests/cli/table_of.h"

namespace mervane::cli {
namespace {

TEST(DelimiterOption, TakesACharacterOrItsName) {
  EXPECT_EQ(delimiterOption("--delimiter", ","), ',');
  EXPECT_EQ(delimiterOption("--delimiter", "comma"), ',');
  EXPECT_EQ(delimiterOption("--delimiter", "tab"), '\t');
  EXPECT_EQ(delimiterOption("--delimiter", "\t"), '\t');
  EXPECT_EQ(delimiterOption("--delimiter", "\\t"), '\t');
  EXPECT_EQ(delimiterOption("--delimiter", "bar"), '|');
  EXPECT_EQ(delimiterOption("--delimiter", ":"), ':');
  for (const char* text : {"", ",,", "\n", "\r", "\"", "§"}) {
    EXPECT_EQ(refusal([&] { static_cast<void>(delimiterOption("--delimiter", text)); }).substr(0, 13), "2: --delimite")
        << text;
  }
}

TEST(QuoteOption, TakesACharacterOrNone) {
  EXPECT_EQ(quoteOption("none"), std::nullopt);
  EXPECT_EQ(quoteOption("'"), '\'');
  EXPECT_EQ(refusal([] { static_cast<void>(quoteOption("''")); }),
            "2: --quote: \"''\" will not do / Give one character, or none.");
}

TEST(OnErrorOption, TakesTheThreeAnswers) {
  EXPECT_EQ(onErrorOption("abort").answer, ErrorPolicy::Answer::abort);
  EXPECT_EQ(onErrorOption("ignore").answer, ErrorPolicy::Answer::ignore);
  EXPECT_EQ(onErrorOption("retry:3").answer, ErrorPolicy::Answer::retry);
  EXPECT_EQ(onErrorOption("retry:3").retries, 3);
  for (const char* text : {"", "retry", "retry:", "retry:0", "retry:-1", "retry:x", "Abort"}) {
    EXPECT_NE(refusal([&] { static_cast<void>(onErrorOption(text)); }), "nothing") << text;
  }
}

TEST(ActivationOption, TakesNumbersAndNames) {
  EXPECT_EQ(activationOption("0"), 0);
  EXPECT_EQ(activationOption("4"), 4);
  EXPECT_EQ(activationOption("default"), 0);
  EXPECT_EQ(activationOption("zerot"), 1);
  EXPECT_EQ(activationOption("exp05"), 3);
  EXPECT_NE(refusal([] { static_cast<void>(activationOption("5")); }), "nothing");
}

TEST(FormatOption, TakesTheFiveFormats) {
  EXPECT_EQ(formatOption("csv"), Format::csv);
  EXPECT_EQ(formatOption("table"), Format::table);
  EXPECT_NE(refusal([] { static_cast<void>(formatOption("xml")); }), "nothing");
}

TEST(NumberOptions, NameTheTextThatWillNotDo) {
  EXPECT_EQ(refusal([] { static_cast<void>(wholeOption("--clusters", "x", 1)); }),
            "2: --clusters: \"x\" will not do / Give a whole number from 1 to 2147483647.");
  EXPECT_EQ(refusal([] { static_cast<void>(fractionOption("--learning-rate", "1")); }),
            "2: --learning-rate: \"1\" will not do / Give a number from 0 to below 1.");
  EXPECT_EQ(refusal([] { static_cast<void>(numberOption("--learning-radius", "2,5")); }),
            "2: --learning-radius: \"2,5\" will not do / Give a number, such as 2.5.");
  EXPECT_EQ(wholeOption("--epochs", "2147483647", 0), 2147483647);
  EXPECT_NE(refusal([] { static_cast<void>(wholeOption("--epochs", "2147483648", 0)); }), "nothing");
  EXPECT_EQ(fractionOption("--learning-rate", "0.999999"), 0.999999);
}

}  // namespace
}  // namespace mervane::cli
