#include "support/app_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "mervane/failure.h"
#include "mervane/service_errors.h"
#include "support/globals.h"
#include "tests/support/test_machine.h"

namespace mervane::tests {

class AppSettings : public testing::Test {
 protected:
  static constexpr const char* path = R"(Software\Tarvik\MervaneCls3\values)";
  static constexpr const char* className = "MervaneCls31.CAppSettings";
  static constexpr const char* storeSource = "MervaneCls31.CAppSetting";  // NB: one letter short.

  AppSettings() { settings.Init("Tarvik", "MervaneCls3"); }

  static void expectFailure(const std::function<void()>& call, std::int32_t number, const char* text,
                            const char* source) {
    try {
      call();
      ADD_FAILURE() << "nothing was raised";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), number);
      EXPECT_EQ(failure.description(), text);
      EXPECT_EQ(failure.source(), source);
    }
  }
  void save(const std::string& key, Variant value) { settings.SaveSetting("values", key, value); }
  Variant read(const std::string& key, const Variant& byDefault = "default") {
    return settings.GetSetting("values", key, byDefault);
  }

  TestMachine machine;
  CAppSettings settings;
};

TEST_F(AppSettings, ANewObjectWorksUnderTheUsersSoftware) {
  const CAppSettings fresh;
  EXPECT_EQ(fresh.RootKey(), hkeyCurrentUser);
  EXPECT_EQ(static_cast<std::uint32_t>(fresh.RootKey()), 0x80000001U);
  EXPECT_EQ(fresh.MainBranch(), "Software");
  EXPECT_EQ(fresh.CompanyName(), "MyCompany");
  EXPECT_EQ(fresh.AppName(), "MyApplication");
}

TEST_F(AppSettings, ErrorNumbersAreThePublishedOnes) {
  EXPECT_EQ(static_cast<std::uint32_t>(eErr_InvalidAppName), 0x8004427DU);
  EXPECT_EQ(static_cast<std::uint32_t>(eErr_InvalidCompanyName), 0x8004427EU);
  EXPECT_EQ(static_cast<std::uint32_t>(eErr_InvalidMainBranch), 0x8004427FU);
  EXPECT_EQ(static_cast<std::uint32_t>(eErr_InvalidRootKey), 0x80044280U);
  EXPECT_EQ(static_cast<std::uint32_t>(eErr_SaveSetting), 0x80044281U);
  EXPECT_EQ(static_cast<std::uint32_t>(eErr_DeleteSetting), 0x80044282U);
  EXPECT_EQ(static_cast<std::uint32_t>(eErr_GetAllKeys), 0x80044283U);
  EXPECT_EQ(static_cast<std::uint32_t>(eErr_SettingsFailure), 0x80044284U);
}

TEST_F(AppSettings, AnEmptyApplicationNameIsRefusedAfterTheCompanyNameHasChanged) {
  expectFailure([&] { settings.Init("Other", ""); }, eErr_InvalidAppName, "Invalid AppName value", className);
  EXPECT_EQ(settings.CompanyName(), "Other");
  EXPECT_EQ(settings.AppName(), "MervaneCls3");
  expectFailure([&] { settings.Init("", "Another"); }, eErr_InvalidCompanyName, "Invalid CompanyName value", className);
  EXPECT_EQ(settings.AppName(), "MervaneCls3");
}

TEST_F(AppSettings, SettersRefuseEmptyTextsAndForeignRoots) {
  expectFailure([&] { settings.AppName(""); }, eErr_InvalidAppName, "Invalid AppName value", className);
  expectFailure([&] { settings.CompanyName(""); }, eErr_InvalidCompanyName, "Invalid CompanyName value", className);
  expectFailure([&] { settings.MainBranch(""); }, eErr_InvalidMainBranch, "Invalid MainBranch value", className);
  for (const std::int32_t root : {0, 1, hkeyCurrentUser - 1, hkeyLocalMachine + 1}) {
    expectFailure([&] { settings.RootKey(root); }, eErr_InvalidRootKey, "Invalid root key value", className);
  }
  settings.RootKey(hkeyLocalMachine);
  settings.MainBranch("Branch");
  settings.CompanyName("Company");
  settings.AppName("App");
  EXPECT_TRUE(machine.journal->entries().empty());  // No setter touches the store.
  save("a", "b");
  EXPECT_TRUE(machine.keyStore->hasKey(MemoryKeyStore::machine, R"(Branch\Company\App\values)"));
}

TEST_F(AppSettings, TheFirstSavingOfASectionMakesAllLevelsInOneCall) {
  save("INPUTS", "A1");
  EXPECT_EQ(machine.journal->entries(), (std::vector<std::string>{std::string("keyStore.create ") + path,
                                                                  "keyStore.set INPUTS", "keyStore.close"}));
  EXPECT_EQ(machine.keyStore->text(path, "INPUTS"), "A1");
}

TEST_F(AppSettings, EachOperationAsksForTheRightsThatItIsToHave) {
  save("INPUTS", "A1");
  static_cast<void>(read("INPUTS"));
  Array<std::string> keys;
  settings.GetAllKeys("values", keys);
  EXPECT_EQ(machine.keyStore->accessMasks, (std::vector<std::uint32_t>{63, 0x20019, 1}));
}

TEST_F(AppSettings, ASectionWithBackslashesNamesADeeperKey) {
  Variant value = "x";
  settings.SaveSetting(R"(values\deep)", "a", value);
  EXPECT_EQ(machine.keyStore->text(std::string(path) + R"(\deep)", "a"), "x");
}

TEST_F(AppSettings, TheEmptyTextIsStoredWithItsNulAndComesBackEmpty) {
  save("INPUTS", "");
  EXPECT_EQ(machine.keyStore->value(MemoryKeyStore::user, path, "INPUTS")->second, std::vector<std::uint8_t>{0});
  EXPECT_EQ(read("INPUTS"), Variant(""));
}

TEST_F(AppSettings, NumbersComeBackAsRoundedIntegersAndSoDoesTheCallersVariable) {
  struct Row {
    Variant saved;
    std::int32_t stored;
  };
  for (const Row& row : {Row{std::int32_t{7}, 7}, Row{std::int16_t{-1}, -1}, Row{2.5, 2}, Row{3.5, 4}, Row{0.5, 0},
                         Row{-2.5F, -2}, Row{Variant(), 0}, Row{2147483647.4, 2147483647}}) {
    Variant variable = row.saved;
    settings.SaveSetting("values", "number", variable);
    EXPECT_EQ(variable, Variant(row.stored));
    EXPECT_EQ(machine.keyStore->integer(path, "number"), row.stored);
    EXPECT_EQ(read("number"), Variant(row.stored));
  }
}

TEST_F(AppSettings, TheCallersVariableChangesEvenWhereTheWriteFails) {
  Variant variable = 2.5;
  machine.keyStore->script.failCall(2);
  expectFailure([&] { settings.SaveSetting("values", "number", variable); }, eErr_SaveSetting,
                "Failed saving the application setting", storeSource);
  EXPECT_EQ(variable, Variant(std::int32_t{2}));
  EXPECT_EQ(machine.keyStore->openHandles(), 1U);  // NB: left open on this path.
}

TEST_F(AppSettings, DatesAndBooleansAreStoredAsTheirTexts) {
  Variant date = Date{38425.0};
  settings.SaveSetting("values", "date", date);
  EXPECT_EQ(date, Variant(Date{38425.0}));
  EXPECT_EQ(read("date"), Variant("3/14/2005"));
  save("yes", true);
  save("no", false);
  EXPECT_EQ(read("yes"), Variant("True"));
  EXPECT_EQ(read("no"), Variant("False"));
  machine.services->locale = localeNamed("de-DE");
  save("ja", true);
  EXPECT_EQ(read("ja"), Variant("Wahr"));
}

TEST_F(AppSettings, AValueThatIsNoNumberFailsBehindTheCreatedKey) {
  for (const Variant& value : {Variant(Null{}), Variant(1e300), Variant(Array<double>({Bounds{1, 2}}))}) {
    Variant variable = value;
    expectFailure([&] { settings.SaveSetting("values", "bad", variable); }, eErr_SettingsFailure,
                  "CAppSettings component failure", className);
    EXPECT_EQ(variable, value);
  }
  EXPECT_TRUE(machine.keyStore->hasKey(MemoryKeyStore::user, path));
  EXPECT_EQ(machine.keyStore->openHandles(), 3U);
}

TEST_F(AppSettings, AKeyThatCannotBeCreatedIsASavingFailure) {
  machine.keyStore->script.failCall(1);
  expectFailure([&] { save("a", "b"); }, eErr_SaveSetting, "Failed saving the application setting", storeSource);
}

TEST_F(AppSettings, WhatIsMissingGivesTheDefaultOfWhateverKind) {
  EXPECT_EQ(read("none", 2.5), Variant(2.5));
  save("other", "x");
  EXPECT_EQ(read("none"), Variant("default"));
  EXPECT_EQ(read("none", Variant()), Variant());
  EXPECT_EQ(read("none", true), Variant(true));
}

TEST_F(AppSettings, AValueOfAnotherTypeGivesTheDefault) {
  machine.keyStore->put(MemoryKeyStore::user, path, "binary", 3, {1, 2, 3, 4});
  EXPECT_EQ(read("binary"), Variant("default"));
  EXPECT_EQ(machine.keyStore->openHandles(), 0U);
}

TEST_F(AppSettings, AnIntegerOfAnotherWidthGivesTheDefaultOrItsOwnBytes) {
  machine.keyStore->put(MemoryKeyStore::user, path, "wide", 4, {1, 2, 3, 4, 5, 6, 7, 8});
  machine.keyStore->put(MemoryKeyStore::user, path, "narrow", 4, {5, 1});
  EXPECT_EQ(read("wide"), Variant("default"));
  EXPECT_EQ(read("narrow"), Variant(std::int32_t{261}));
}

TEST_F(AppSettings, ATextOfNoBytesFailsAndLeavesItsHandleOpen) {
  machine.keyStore->put(MemoryKeyStore::user, path, "text", 1, {});
  expectFailure([&] { (void)read("text"); }, eErr_SettingsFailure, "CAppSettings component failure", className);
  EXPECT_EQ(machine.keyStore->openHandles(), 1U);
}

TEST_F(AppSettings, ATextLosesItsLastByteWhateverThatIs) {
  machine.keyStore->put(MemoryKeyStore::user, path, "text", 1, {'a', 'b', 'c'});
  EXPECT_EQ(read("text"), Variant("ab"));
  machine.keyStore->put(MemoryKeyStore::user, path, "text", 1, {'a', 0, 'c', 0});
  EXPECT_EQ(read("text"), Variant(std::string("a\0c", 3)));
}

TEST_F(AppSettings, ReadingSurvivesAFailureOfEachCall) {
  save("a", "stored");
  for (int call = 1; call <= 4; ++call) {
    machine.keyStore->script.failCall(call);
    EXPECT_EQ(read("a"), Variant(call == 4 ? "stored" : "default")) << call;
    EXPECT_TRUE(machine.keyStore->script.triggered());
  }
  machine.keyStore->script.failCall(5);
  EXPECT_EQ(read("a"), Variant("stored"));
  EXPECT_FALSE(machine.keyStore->script.triggered());
}

TEST_F(AppSettings, ARegistryOpeningAsksForReadingAlone) {
  machine.keyStore->putText(path, "a", "stored");
  EXPECT_EQ(read("a"), Variant("stored"));
  EXPECT_EQ(machine.journal->entries(),
            (std::vector<std::string>{std::string("keyStore.open ") + path, "keyStore.query a", "keyStore.query a",
                                      "keyStore.close"}));
  EXPECT_EQ(machine.keyStore->openHandles(), 0U);
}

TEST_F(AppSettings, AllKeysAreListedFromOneInTheStoresOrder) {
  for (const char* key : {"second to none", "b", "a"}) save(key, "1");
  Array<std::string> keys;
  settings.GetAllKeys("values", keys);
  ASSERT_EQ(keys.dimensions(), 1);
  EXPECT_EQ(keys.lowerBound(1), 1);
  EXPECT_EQ(keys.upperBound(1), 3);
  EXPECT_EQ(keys.at(1), "second to none");
  EXPECT_EQ(keys.at(2), "b");
  EXPECT_EQ(keys.at(3), "a");
  EXPECT_EQ(machine.keyStore->openHandles(), 0U);
}

TEST_F(AppSettings, SubkeysAreNotListed) {
  save("a", "1");
  Variant value = "x";
  settings.SaveSetting(R"(values\deep)", "b", value);
  Array<std::string> keys;
  settings.GetAllKeys("values", keys);
  EXPECT_THAT(keys.elements(), testing::ElementsAre("a"));
}

TEST_F(AppSettings, AMissingSectionEmptiesTheArrayAndFails) {
  Array<std::string> keys({Bounds{1, 2}});
  expectFailure([&] { settings.GetAllKeys("none", keys); }, eErr_GetAllKeys, "Failed getting all the application keys",
                storeSource);
  EXPECT_EQ(keys.dimensions(), 0);
  EXPECT_EQ(settings.GetSetting("none", "a", "default"), Variant("default"));
}

TEST_F(AppSettings, ASectionWithoutValuesGivesNoElements) {
  Variant value = "x";
  settings.SaveSetting(R"(values\deep)", "b", value);
  Array<std::string> keys({Bounds{1, 2}});
  settings.GetAllKeys("values", keys);
  EXPECT_TRUE(keys.elements().empty());
}

TEST_F(AppSettings, AFailedQuestionForTheLongestNameGivesNoElementsAndNoError) {
  save("a", "1");
  Array<std::string> keys;
  machine.keyStore->script.failCall(2);
  settings.GetAllKeys("values", keys);
  EXPECT_TRUE(keys.elements().empty());
  EXPECT_EQ(machine.keyStore->openHandles(), 0U);
}

TEST_F(AppSettings, AFailedEnumerationKeepsTheNamesBeforeIt) {
  for (const char* key : {"a", "b", "c"}) save(key, "1");
  Array<std::string> keys;
  machine.keyStore->script.failCall(5);  // Open, info, first name, second name, third name.
  settings.GetAllKeys("values", keys);
  EXPECT_THAT(keys.elements(), testing::ElementsAre("a", "b"));
}

TEST_F(AppSettings, MoreNamesThanSixteenBitsCountAreNotProvidedFor) {
  // A store that has a name for every index.
  class Endless : public MemoryKeyStore {
   public:
    std::int32_t RegEnumValueA(Handle, std::uint32_t, char* name, std::uint32_t& size) override {
      name[0] = 'n';
      size = 1;
      return success;
    }
  };
  auto endless = std::make_shared<Endless>();
  endless->putText(path, "n", "1");
  machine.services->keyStore = endless;
  Array<std::string> keys;
  expectFailure([&] { settings.GetAllKeys("values", keys); }, eErr_SettingsFailure, "CAppSettings component failure",
                className);
  EXPECT_EQ(keys.upperBound(1), 32767);
  EXPECT_EQ(keys.at(1), "n");
  EXPECT_EQ(keys.at(32767), "n");
}

TEST_F(AppSettings, AsManyNamesAsSixteenBitsCountAreStillGiven) {
  class Full : public MemoryKeyStore {
   public:
    std::int32_t RegEnumValueA(Handle, std::uint32_t index, char* name, std::uint32_t& size) override {
      if (index == 32767) return noMoreItems;
      name[0] = 'n';
      size = 1;
      return success;
    }
  };
  auto full = std::make_shared<Full>();
  full->putText(path, "n", "1");
  machine.services->keyStore = full;
  Array<std::string> keys;
  settings.GetAllKeys("values", keys);
  EXPECT_EQ(keys.upperBound(1), 32767);
}

TEST_F(AppSettings, TheSecondQuestionForATextAlwaysOffersAPlaceToWriteTo) {
  class Watching : public MemoryKeyStore {
   public:
    std::int32_t RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                                  std::uint32_t& size) override {
      places.push_back(data != nullptr);
      return MemoryKeyStore::RegQueryValueExA(key, name, type, data, size);
    }
    std::vector<bool> places;
  };
  auto watching = std::make_shared<Watching>();
  watching->put(MemoryKeyStore::user, path, "INPUTS", MemoryKeyStore::typeText, {});
  machine.services->keyStore = watching;
  expectFailure([&] { (void)read("INPUTS"); }, eErr_SettingsFailure, "CAppSettings component failure", className);
  EXPECT_EQ(watching->places, (std::vector<bool>{false, true}));
}

TEST_F(AppSettings, AMachineWithoutAStoreFailsEachOperation) {
  machine.services->keyStore = nullptr;
  Array<std::string> keys;
  for (const std::function<void()>& call : std::vector<std::function<void()>>{
           [&] { save("a", "1"); }, [&] { (void)read("a"); }, [&] { settings.GetAllKeys("values", keys); },
           [&] { settings.DeleteSetting("values", ""); }}) {
    expectFailure(call, eErr_SettingsFailure, "CAppSettings component failure", className);
  }
}

TEST_F(AppSettings, DeletingASectionDeletesItsValues) {
  save("a", "1");
  settings.DeleteSetting("values", "");
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, path));
}

TEST_F(AppSettings, DeletingAKeyDeletesTheSubkeyNamedKeyWhateverTheKeyIs) {
  save("INPUTS", "1");
  expectFailure([&] { settings.DeleteSetting("values", "INPUTS"); }, eErr_DeleteSetting,
                "Failed deleting the application setting", storeSource);
  EXPECT_EQ(machine.keyStore->text(path, "INPUTS"), "1");

  Variant value = "x";
  settings.SaveSetting(R"(values\Key)", "a", value);
  settings.DeleteSetting("values", "INPUTS");
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, std::string(path) + R"(\Key)"));
  EXPECT_EQ(machine.keyStore->text(path, "INPUTS"), "1");
}

TEST_F(AppSettings, ASectionWithSubkeysCannotBeDeleted) {
  Variant value = "x";
  settings.SaveSetting(R"(values\deep)", "a", value);
  expectFailure([&] { settings.DeleteSetting("values", ""); }, eErr_DeleteSetting,
                "Failed deleting the application setting", storeSource);
}

TEST_F(AppSettings, TheObjectIsNotOnTheCallStack) {
  globals::errorHandler().TracingFlags(tfLogFile);
  globals::errorHandler().TracingEnabled(true);
  save("a", "1");
  (void)read("a");
  EXPECT_FALSE(machine.textFiles->exists("Tracing Log.txt"));
}

}  // namespace mervane::tests
