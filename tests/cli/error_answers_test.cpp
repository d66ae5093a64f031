#include "cli/error_answers.h"

#include <gtest/gtest.h>

#include "cli/services.h"
#include "cli/talk.h"
#include "support/globals.h"
#include "support/procedures.h"
#include "tests/cli/temporary_stream.h"

namespace mervane::cli {
namespace {

class ErrorAnswersTest : public testing::Test {
 protected:
  /// Runs a traced procedure whose one statement fails that many times; returns how often it was tried.
  int tries(ErrorPolicy policy, int failures) {
    ErrorAnswers answers(talk, policy);
    const ServicesInUse services(commandLineServices(answers));
    globals::errorHandler().Init(ehaErrorForm, "a", true, false, tfLogFile, "b");
    int count = 0;
    traced("MervaneClass3.Test.Procedure", [&](Steps& step) {
      step([&] {
        if (++count <= failures) throw Failure(13, "Type mismatch\x1b");
      });
    });
    aborted = answers.aborted();
    retried = answers.retried();
    ignored = answers.ignored();
    return count;
  }

  TemporaryStream stream;
  Talk talk{stream.file()};
  int aborted = 0;
  int retried = 0;
  int ignored = 0;
};

TEST_F(ErrorAnswersTest, AbortGivesTheProcedureUp) {
  EXPECT_EQ(tries({}, 1), 1);
  EXPECT_EQ(aborted, 1);
}

TEST_F(ErrorAnswersTest, TheCauseOfAnAbortIsThatOfTheFirstFailureAndNotItsWrapping) {
  ErrorAnswers answers(talk, {});
  const ServicesInUse services(commandLineServices(answers));
  globals::errorHandler().Init(ehaErrorForm, "a", true, false, tfLogFile, "b");
  EXPECT_EQ(answers.causeOfAbort(), "");
  for (const char* cause : {"The cell G7 is locked.", "The cell G8 is locked."}) {
    traced("MervaneClass3.Test.Procedure", [&](Steps& step) {
      step([&] {
        wrapping("Outer", "MervaneClass3.Test.Outer",
                 [&] { wrapping("Inner", "MervaneClass3.Test.Inner", [&] { throw Failure(1004, cause); }); });
      });
    });
  }
  EXPECT_EQ(answers.aborted(), 2);
  EXPECT_EQ(answers.causeOfAbort(), "The cell G7 is locked.");
  EXPECT_NE(stream.text().find("(Outer component failure)"), std::string::npos) << "the report keeps to its own words";
  EXPECT_EQ(stream.text().find("locked"), std::string::npos);
}

TEST_F(ErrorAnswersTest, TheWholeReportIsPrintedWithoutWhatATerminalObeys) {
  tries({}, 1);
  const std::string text = stream.text();
  EXPECT_NE(text.find("\tError: 13, (Type mismatch?)\n\tin MervaneClass3.Test.Procedure at line 0\n"),
            std::string::npos);
  EXPECT_NE(text.find("The call stack is:\n                    MervaneClass3.Test.Procedure()\n"), std::string::npos);
  EXPECT_EQ(text.find('\r'), std::string::npos);
}

TEST_F(ErrorAnswersTest, RetryTriesAsOftenAsItSaysAndThenAborts) {
  EXPECT_EQ(tries({ErrorPolicy::Answer::retry, 2}, 5), 3);
  EXPECT_EQ(retried, 2);
  EXPECT_EQ(aborted, 1);
}

TEST_F(ErrorAnswersTest, RetryThatSucceedsLeavesNoFailure) {
  EXPECT_EQ(tries({ErrorPolicy::Answer::retry, 5}, 2), 3);
  EXPECT_EQ(retried, 2);
  EXPECT_EQ(aborted, 0);
}

TEST_F(ErrorAnswersTest, IgnoreGoesOn) {
  EXPECT_EQ(tries({ErrorPolicy::Answer::ignore, 0}, 1), 1);
  EXPECT_EQ(ignored, 1);
  EXPECT_EQ(aborted, 0);
}

TEST_F(ErrorAnswersTest, NothingIsPrintedWithoutAFailure) {
  EXPECT_EQ(tries({}, 0), 1);
  EXPECT_EQ(stream.text(), "");
}

TEST_F(ErrorAnswersTest, InsideARunTheFirstAbortEndsItAndNothingIsPrintedBehindThat) {
  ErrorAnswers answers(talk, {});
  const ServicesInUse services(commandLineServices(answers));
  globals::errorHandler().Init(ehaErrorForm, "a", true, false, tfLogFile, "b");
  const auto fail = [](Steps& step) { step([] { throw Failure(13, "Type mismatch"); }); };
  bool wentOn = false;
  {
    const ErrorAnswers::Run run(answers);
    EXPECT_THROW(traced("MervaneClass3.Test.Outer",
                        [&](Steps& step) {
                          step([&] { traced("MervaneClass3.Test.Inner", fail); });
                          wentOn = true;
                        }),
                 Problem);
  }
  EXPECT_FALSE(wentOn);
  EXPECT_EQ(answers.aborted(), 1);
  const std::string text = stream.text();
  traced("MervaneClass3.Test.Behind", fail);
  EXPECT_EQ(stream.text(), text);
}

TEST_F(ErrorAnswersTest, IgnoreSaysWhatIsLeftOutByTheProcedureThatFailed) {
  tries({ErrorPolicy::Answer::ignore, 0}, 1);
  EXPECT_NE(stream.text().find("mervane: ignored; one step of Procedure is left out\n"), std::string::npos);
}

}  // namespace
}  // namespace mervane::cli
