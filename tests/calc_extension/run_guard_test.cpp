#include "calc/run_guard.h"

#include <gtest/gtest.h>

#include "calc/guarded_window.h"
#include "calc/texts.h"
#include "dialog/frm_main.h"
#include "hosts/workbook/workbook_host.h"
#include "platform/headless/headless_option_window.h"
#include "support/globals.h"
#include "tests/support/test_machine.h"

namespace mervane::addin {
namespace {

/// The dialog with its defaults but for the ranges, before the Iris example: numbers in B2:E151, species in column A.
class RunGuard : public testing::Test {
 protected:
  RunGuard() { machine.services->createOptionWindow = platform::headlessOptionWindows(user); }

  void put(const std::string& cell, const Variant& value) {
    const Variant text(cell);
    const sheet::ObjectRef range =
        book->application()->invoke(sheet::Access::get, sheet::member::Range, {&text, 1}).object();
    static_cast<void>(range->invoke(sheet::Access::put, sheet::member::Value, {&value, 1}));
  }
  Objections objections(const std::string& inputs, const std::string& outputs,
                        const std::function<void(platform::HeadlessOptionWindow&)>& more = {}) {
    Objections found;
    user->atNextShowing([&](platform::HeadlessOptionWindow& window) {
      EXPECT_TRUE(window.edit("INPUTS", inputs));
      EXPECT_TRUE(window.edit("OUTPUTS", outputs));
      if (more) more(window);
      found = objectionsTo(window.options(), *book, *book, [&](const std::string& sheet) { activated = sheet; });
    });
    frmMain dialog;
    dialog.Show();
    return found;
  }

  tests::TestMachine machine;
  std::shared_ptr<platform::HeadlessUser> user = std::make_shared<platform::HeadlessUser>();
  std::unique_ptr<workbook::WorkbookHost> book = workbook::WorkbookHost::open(MERVANE_SOURCE_DIR "/examples/iris.xlsx");
  std::string activated;
};

TEST_F(RunGuard, HasNothingAgainstARunBesideTheData) {
  const Objections found = objections("Iris!B2:E151", "Iris!G2");
  EXPECT_EQ(found.refusal, "");
  EXPECT_EQ(found.question, "");
  EXPECT_EQ(found.tornApart, "");
  EXPECT_EQ(activated, "Iris");
}

TEST_F(RunGuard, RefusesAListingInsideTheInputsAndNamesAPlaceThatWouldDo) {
  const Objections found = objections("Iris!B2:E151", "Iris!C3");
  EXPECT_EQ(found.refusal,
            "The sheet does not allow that run:\n- the listing at Iris!C2:C152 would overwrite the inputs Iris!B2:E151"
            "\n\nIt would go with Outputs Iris!H2.");
  EXPECT_EQ(found.question, "");
}

TEST_F(RunGuard, SpeaksGermanAroundWhatItLists) {
  speak(Language::german);
  const Objections refused = objections("Iris!B2:E151", "Iris!C3");
  put("Iris!H5", Variant("a note"));
  const Objections asked = objections("Iris!B2:E151", "Iris!H2");
  speak(Language::english);
  EXPECT_TRUE(refused.refusal.starts_with("Das Blatt lässt das nicht zu:\n- ")) << refused.refusal;
  EXPECT_TRUE(refused.refusal.ends_with("\n\nEs ginge mit Outputs Iris!H2.")) << refused.refusal;
  EXPECT_TRUE(asked.question.ends_with("\n\nTrotzdem gruppieren?")) << asked.question;
  EXPECT_EQ(asked.question.find("The run"), std::string::npos) << asked.question;
}

TEST_F(RunGuard, AsksAboutCellsThatWouldBeOverwritten) {
  put("Iris!B153", Variant("Total"));
  put("Iris!H5", Variant("a note"));
  const Objections found = objections("Iris!B2:E151", "Iris!H2");
  EXPECT_EQ(found.refusal, "");
  EXPECT_NE(found.question.find("The run would remove or overwrite what is there:\n- "), std::string::npos);
  EXPECT_NE(found.question.find("H5 \"a note\""), std::string::npos) << found.question;
  EXPECT_NE(found.question.find("B153 \"Total\""), std::string::npos) << found.question;
  EXPECT_NE(found.question.find("It would harm nothing with Outputs Iris!"), std::string::npos) << found.question;
  EXPECT_TRUE(found.question.ends_with("Clusterize all the same?")) << found.question;
}

TEST_F(RunGuard, ProposesNoRunOfWhichLittleWouldBeLeft) {
  for (int row = 152; row < 170; ++row) put("Iris!E" + std::to_string(row), Variant(1.0));
  put("Iris!H5", Variant("a note"));
  const Objections found = objections("Iris!B2:E151", "Iris!H2");
  EXPECT_NE(found.question.find("the statistics would overwrite"), std::string::npos) << found.question;
  EXPECT_EQ(found.question.find("It would harm nothing"), std::string::npos) << found.question;
}

TEST_F(RunGuard, AsksAboutColumnsThatSortingWouldTearFromTheirRows) {
  put("Iris!H5", Variant("belongs to row 5"));
  const Objections found = objections("Iris!B2:E151", "Iris!J2");
  EXPECT_EQ(found.question, "");
  EXPECT_NE(found.tornApart.find("the cells of column H, right of the inputs"), std::string::npos) << found.tornApart;
  const Objections unsorted = objections("Iris!B2:E151", "Iris!J2",
                                         [](platform::HeadlessOptionWindow& window) { window.click("SORTCLUSTERS"); });
  EXPECT_EQ(unsorted.tornApart, "");
}

TEST_F(RunGuard, LeavesToTheComponentWhatTheComponentRefuses) {
  for (const auto& [inputs, outputs] : {std::pair("Iris!$B$2:$E$151", "Iris!C3"),
                                        std::pair("Nowhere!B2:E151", "Iris!C3"), std::pair("Iris!B2:E151", "Iris!$C$3"),
                                        std::pair("Iris!A2:E151", "Iris!C3"), std::pair("Iris!B2:E2", "Iris!C3")}) {
    const Objections found = objections(inputs, outputs);
    EXPECT_EQ(found.refusal + found.question + found.tornApart, "") << inputs << " " << outputs;
  }
}

TEST_F(RunGuard, AWindowStaysOpenUntilTheRunMayBe) {
  int asked = 0;
  bool allowed = false;
  machine.services->createOptionWindow = [&] {
    return guardedWindow(platform::headlessOptionWindows(user)(), [&](const platform::OptionItems& options) {
      EXPECT_TRUE(options.Contains("INPUTS"));
      ++asked;
      return allowed;
    });
  };
  user->atNextShowing([&](platform::HeadlessOptionWindow& window) {
    window.press("CLASSIFY");
    EXPECT_TRUE(window.isShown());
    allowed = true;
    window.press("CLASSIFY");
    EXPECT_FALSE(window.isShown());
  });
  frmMain dialog;
  dialog.Show();
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(dialog.Tag(), "CLASSIFY");
}

}  // namespace
}  // namespace mervane::addin
