#include "dialog/store_without_places.h"

#include "dialog/remembered_options.h"
#include "support/app_settings.h"
#include "tests/dialog/dialog_fixture.h"

namespace mervane::tests {

class StoreWithoutPlaces : public DialogTest {
 protected:
  StoreWithoutPlaces() { machine.services->keyStore = dialog::storeWithoutPlaces(machine.keyStore); }

  static CAppSettings settings() {
    CAppSettings result;
    result.Init(dialog::companyName, dialog::applicationName);
    return result;
  }
};

TEST_F(StoreWithoutPlaces, AShowingKeepsItsValuesAndNoPlaceOfTheWindow) {
  user->atNextShowing([](platform::HeadlessOptionWindow& window) {
    window.edit("CLUSTERS", "7");
    window.press("CLASSIFY");
  });
  dialog.Show();
  EXPECT_EQ(machine.keyStore->integer(valuesPath, "CLUSTERS"), 7);
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, windowPath));
}

TEST_F(StoreWithoutPlaces, APlaceThatIsThereIsReadAndNotReplaced) {
  machine.keyStore->putInteger(windowPath, "left", 300);
  EXPECT_EQ(dialog.measure(platform::WindowMeasure::left), 300.0F);
  Variant place = std::int32_t{400};
  EXPECT_THROW(settings().SaveSetting(dialog::windowSection, "left", place), Failure);
  EXPECT_EQ(machine.keyStore->integer(windowPath, "left"), 300);
}

TEST_F(StoreWithoutPlaces, EveryOtherOperationReachesTheStoreBehindIt) {
  Variant value = "text";
  settings().SaveSetting(dialog::valuesSection, "INPUTS", value);
  EXPECT_EQ(settings().GetSetting(dialog::valuesSection, "INPUTS", Variant()), Variant("text"));
  Array<std::string> keys;
  settings().GetAllKeys(dialog::valuesSection, keys);
  ASSERT_EQ(keys.elements().size(), 1U);
  EXPECT_EQ(keys.at(1), "INPUTS");
  settings().DeleteSetting(dialog::valuesSection, "");
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, valuesPath));
  EXPECT_EQ(machine.keyStore->openHandles(), 0U);
}

TEST_F(StoreWithoutPlaces, ASectionWhoseNameOnlyEndsLikeThatOfThePlacesIsKept) {
  Variant value = "text";
  settings().SaveSetting("mywindow", "a", value);
  EXPECT_EQ(settings().GetSetting("mywindow", "a", Variant()), Variant("text"));
}

}  // namespace mervane::tests
