#include "support/validation.h"

#include <gtest/gtest.h>

#include "tests/support/test_machine.h"

namespace mervane::tests {

class Validation : public testing::Test {
 protected:
  TestMachine machine;
  CValidation validation;
};

TEST_F(Validation, ALimitItselfIsRefused) {
  EXPECT_FALSE(validation.ValidateLongRange("5", 5, 10));
  EXPECT_TRUE(validation.ValidateLongRange("6", 5, 10));
  EXPECT_TRUE(validation.ValidateLongRange("9", 5, 10));
  EXPECT_FALSE(validation.ValidateLongRange("10", 5, 10));
  EXPECT_FALSE(validation.ValidateDoubleRange("0.99999", 0.00001, 0.99999));
  EXPECT_FALSE(validation.ValidateDoubleRange("0.00001", 0.00001, 0.99999));
  EXPECT_TRUE(validation.ValidateDoubleRange("0.5", 0.00001, 0.99999));
}

TEST_F(Validation, WhatIsNoNumberIsAnsweredByFalse) {
  for (const char* text : {"", " ", "word", "1 2 x", "--1", "1e", "0x10", "1.2.3", "nan", "inf", "1e999"}) {
    EXPECT_FALSE(validation.ValidateDouble(text)) << text;
    EXPECT_FALSE(validation.ValidateLong(text)) << text;
    EXPECT_FALSE(validation.ValidateDoubleRange(text, -1e300, 1e300)) << text;
    EXPECT_FALSE(validation.ValidateLongRange(text, -2147483647, 2147483647)) << text;
  }
}

TEST_F(Validation, AWholeNumberMustFitIntoThirtyTwoBits) {
  EXPECT_FALSE(validation.ValidateLong("2147483648"));
  EXPECT_TRUE(validation.ValidateDouble("2147483648"));
  EXPECT_TRUE(validation.ValidateLong("2147483647"));
  EXPECT_TRUE(validation.ValidateLong("-2147483648"));
  EXPECT_FALSE(validation.ValidateLong("-2147483649"));
  EXPECT_TRUE(validation.ValidateLong("2147483647.4"));
  EXPECT_FALSE(validation.ValidateLong("2147483647.5"));
}

TEST_F(Validation, AFractionPassesAsAWholeNumberAndIsRoundedToTheEvenNeighbour) {
  EXPECT_TRUE(validation.ValidateLong("2.5"));
  EXPECT_FALSE(validation.ValidateLongRange("2.5", 2, 4));  // 2.5 is 2.
  EXPECT_TRUE(validation.ValidateLongRange("2.51", 2, 4));
  EXPECT_FALSE(validation.ValidateLongRange("3.5", 2, 4));  // 3.5 is 4.
}

TEST_F(Validation, SignsBlanksAndExponentsAreTaken) {
  for (const char* text : {"+3", " 3 ", "3E0", "0.3e1", "30e-1", "3."}) {
    EXPECT_TRUE(validation.ValidateLongRange(text, 2, 4)) << text;
  }
  EXPECT_TRUE(validation.ValidateDoubleRange("-.5", -1, 0));
}

TEST_F(Validation, TheDecimalSeparatorIsTheUsersOwn) {
  struct Row {
    const char* locale;
    const char* half;
    const char* thousand;
  };
  for (const Row& row : {Row{"en-US", "0.5", "1,000"}, Row{"de-DE", "0,5", "1.000"}, Row{"fr-FR", "0,5", "1 000"},
                         Row{"de-CH", "0.5", "1'000"}, Row{"sv-SE", "0,5", "1 000"}, Row{"pt-BR", "0,5", "1.000"}}) {
    machine.services->locale = localeNamed(row.locale);
    EXPECT_TRUE(validation.ValidateDoubleRange(row.half, 0.4, 0.6)) << row.locale;
    EXPECT_TRUE(validation.ValidateLongRange(row.thousand, 999, 1001)) << row.locale;
  }
}

}  // namespace mervane::tests
