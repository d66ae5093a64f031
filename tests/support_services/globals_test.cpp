#include "support/globals.h"

#include <gtest/gtest.h>

#include <thread>

#include "mervane/runtime_errors.h"
#include "support/frm_error_message.h"
#include "tests/support/failure_matchers.h"
#include "tests/support/test_machine.h"

namespace mervane {
namespace {

using tests::failureOf;
using tests::IsFailure;

TEST(Globals, PlatformRaisesWhereNoServicesHaveBeenSet) {
  globals::release();
  EXPECT_THAT(failureOf([] { static_cast<void>(globals::platform()); }),
              IsFailure(runtime::objectNotSet.number, runtime::objectNotSet.description, ""));
}

TEST(Globals, LocaleIsTheServicesOwnAndEnglishWithoutServices) {
  {
    const tests::TestMachine machine;
    machine.services->locale.decimalSeparator = ",";
    EXPECT_EQ(globals::locale().decimalSeparator, ",");
  }
  EXPECT_EQ(globals::locale(), englishLocale());
}

TEST(Globals, HandlerAndDialogAreMadeAtFirstUseAndStayTheSame) {
  const tests::TestMachine machine;
  CErrorHandler* const handler = &globals::errorHandler();
  frmErrorMessage* const form = &globals::errorMessageForm();
  EXPECT_EQ(&globals::errorHandler(), handler);
  EXPECT_EQ(&globals::errorMessageForm(), form);
}

TEST(Globals, ReleaseLetsTheNextUseBeginAnew) {
  const tests::TestMachine machine;
  globals::errorHandler().Tag("old");
  globals::release();
  EXPECT_EQ(globals::errorHandler().Tag(), "");
}

TEST(Globals, EachThreadHasAHandlerADialogAndServicesOfItsOwn) {
  const tests::TestMachine machine;
  globals::errorHandler().CallStackEnabled(true);
  globals::errorHandler().CallStackPush("here", "");
  globals::errorHandler().Tag("here");
  const CErrorHandler* const here = &globals::errorHandler();
  const frmErrorMessage* const formHere = &globals::errorMessageForm();

  std::thread([&] {
    EXPECT_TRUE(failureOf([] { static_cast<void>(globals::platform()); }).has_value());
    const tests::TestMachine other;
    EXPECT_NE(&globals::errorHandler(), here);
    EXPECT_NE(&globals::errorMessageForm(), formHere);
    EXPECT_EQ(globals::errorHandler().Tag(), "");
    globals::errorHandler().Tag("there");
    globals::errorHandler().CallStackPush("there", "");
    static_cast<void>(globals::errorHandler().HandleError("", Failure(13, "Type mismatch")));
    EXPECT_TRUE(other.messageBox->shown.at(0).text.ends_with("The call stack is:\r\n                    there()"));
  }).join();

  EXPECT_EQ(globals::errorHandler().Tag(), "here");
  EXPECT_EQ(globals::errorHandler().ErrorNumber(), 0);
  static_cast<void>(globals::errorHandler().HandleError("", Failure(13, "Type mismatch")));
  EXPECT_TRUE(machine.messageBox->shown.at(0).text.ends_with("The call stack is:\r\n                    here()"));
}

}  // namespace
}  // namespace mervane
