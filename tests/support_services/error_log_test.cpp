#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/error_handler.h"
#include "tests/support/test_machine.h"

namespace mervane {
namespace {

/// What both logs hold: the text as it stands, whatever it is made of and however long it is.
class ErrorLog : public testing::Test {
 protected:
  static constexpr const char* odd = "a\tb\r\nc \"d\" 'e' \\n 100% &lt; {0} \xC3\xA9";

  tests::TestMachine machine;
  CErrorHandler handler;
};

TEST_F(ErrorLog, AReportIsWrittenWithoutEscapes) {
  handler.ErrorHandlerActions(ehaLogFile);
  handler.CallStackPush(odd, odd);
  static_cast<void>(handler.HandleError(odd, Failure(5, odd)));
  const std::string text(odd);
  EXPECT_THAT(
      machine.textFiles->content("Error Log.txt"),
      testing::EndsWith("\r\n\tError: 5, (" + text + ")\r\n\tin " + text +
                        " at line 0\r\n\r\nThe call stack is:\r\n                    " + text + "(" + text + ")\r\n"));
}

TEST_F(ErrorLog, ATracingLineIsWrittenWithoutEscapes) {
  handler.Init(ehaLogFile, "errors", true, true, tfLogFile, "trace");
  handler.CallStackPush(odd, "");
  EXPECT_THAT(machine.textFiles->content("trace"),
              testing::EndsWith(std::string(" --- Entered routine: ") + odd + "\r\n"));
}

TEST_F(ErrorLog, AReportOfManyThousandCharactersIsWrittenWhole) {
  handler.ErrorHandlerActions(ehaLogFile | ehaMessageBox);
  for (int i = 0; i < 200; ++i) handler.CallStackPush("procedure " + std::to_string(i), "");
  static_cast<void>(handler.HandleError("", Failure(5, std::string(5000, 'x') + "end")));
  const std::string log = machine.textFiles->content("Error Log.txt");
  EXPECT_THAT(log, testing::HasSubstr("(" + std::string(5000, 'x') + "end)"));
  // 200 lines of 20 blanks each, innermost first.
  EXPECT_THAT(log, testing::HasSubstr("                    procedure 199()\r\n"));
  EXPECT_THAT(log, testing::EndsWith("\r\n                    procedure 0()\r\n"));
  EXPECT_EQ(log, machine.messageBox->shown.at(0).text + "\r\n");
}

}  // namespace
}  // namespace mervane
