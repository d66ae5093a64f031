#include "dialog/remembered_options.h"

#include <gmock/gmock.h>

#include "tests/dialog/dialog_fixture.h"

namespace mervane::tests {

using testing::HasSubstr;

class RememberedOptions : public DialogTest {
 protected:
  static std::string refusalOf(const std::string& key, const std::string& text) {
    try {
      dialog::remember(key, text);
    } catch (const Failure& failure) {
      return failure.description();
    }
    return {};
  }
  static std::optional<Variant> listed(const std::string& key) {
    for (const auto& option : dialog::rememberedOptions()) {
      if (option.key == key) return option.value;
    }
    return std::nullopt;
  }
};

TEST_F(RememberedOptions, EveryKeyThatTheDialogReadsIsListedInItsOrder) {
  machine.keyStore->putInteger(valuesPath, "x", 1);
  machine.keyStore->putInteger(windowPath, "x", 1);
  (void)dialog.Inputs();
  std::vector<std::string> read;
  for (const std::string& entry : machine.journal->entries()) {
    constexpr std::string_view query = "keyStore.query ";
    if (entry.starts_with(query)) read.push_back(entry.substr(query.size()));
  }
  std::vector<std::string> keys;
  for (const auto& option : dialog::rememberedOptions()) {
    keys.push_back(option.key);
    EXPECT_FALSE(option.value.has_value()) << option.key;
  }
  EXPECT_EQ(keys, read);
}

TEST_F(RememberedOptions, WhatIsRememberedIsWhatTheDialogShows) {
  dialog::remember("inputs", "Sheet1!A1:B9");
  dialog::remember("CLUSTERS", "7");
  dialog::remember("LearningRate", "0.25");
  dialog::remember("USECONVEX", "off");
  dialog::remember("OUTSPLIT", "0");
  dialog::remember("OUTPUTGROUP", "yes");
  dialog::remember("ACTIVATIONFUNCTION", "1");
  dialog::remember("LEFT", "-15");
  frmMain form;
  EXPECT_EQ(form.Inputs(), "Sheet1!A1:B9");
  EXPECT_EQ(form.Clusters(), "7");
  EXPECT_EQ(form.LearningRate(), "0.25");
  EXPECT_FALSE(form.UseConvex());
  EXPECT_FALSE(form.SplitToOneColumn());
  EXPECT_TRUE(form.suiOptions().Item("OUTPUTGROUP").Expanded);
  EXPECT_EQ(form.ActivationFunction(), ACTIVATE_FUNC_ZEROT);
  EXPECT_EQ(form.measure(platform::WindowMeasure::left), -15.0F);
  EXPECT_EQ(listed("CLUSTERS"), Variant("7"));
  EXPECT_EQ(listed("OUTSPLIT"), Variant(std::int32_t{0}));
}

TEST_F(RememberedOptions, ABadValueIsRefusedWithWhatItTakesAndNothingIsStored) {
  EXPECT_EQ(refusalOf("clusters", "1"), "CLUSTERS takes a whole number above 1 and below 999, not \"1\".");
  EXPECT_THAT(refusalOf("LEARNINGRATE", "fast"), HasSubstr("takes a number above 1E-05 and below 0.99999"));
  EXPECT_THAT(refusalOf("USECONVEX", "maybe"), HasSubstr("takes 1 or 0"));
  for (const char* code : {"5", "0", "22", "", "x"}) {
    EXPECT_THAT(refusalOf("ACTIVATIONFUNCTION", code), HasSubstr("from 1 to 4"));
  }
  EXPECT_THAT(refusalOf("left", "here"), HasSubstr("twips"));
  EXPECT_THAT(refusalOf("COLOUR", "red"), HasSubstr("no setting \"COLOUR\""));
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, "Software"));
}

TEST_F(RememberedOptions, EveryFunctionOfTheListIsTaken) {
  for (const char* code : {"1", "2", "3", "4"}) {
    dialog::remember("ACTIVATIONFUNCTION", code);
    EXPECT_EQ(listed("ACTIVATIONFUNCTION"), Variant(code));
  }
}

TEST_F(RememberedOptions, AValueCanBeCheckedWithoutBeingRemembered) {
  dialog::checkRemembered("CLUSTERS", "7");
  EXPECT_THROW(dialog::checkRemembered("CLUSTERS", "1"), Failure);
  EXPECT_THROW(dialog::checkRemembered("COLOUR", "red"), Failure);
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, "Software"));
}

TEST_F(RememberedOptions, ForgettingLeavesADialogWithItsDefaults) {
  dialog::remember("CLUSTERS", "7");
  dialog::remember("left", "100");
  dialog::forgetRememberedOptions();
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, valuesPath));
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, windowPath));
  EXPECT_EQ(dialog.Clusters(), "3");
  dialog::forgetRememberedOptions();  // Nothing is left to forget.
}

}  // namespace mervane::tests
