#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

void sheetsAreFoundByPositionAndByNameInWhicheverCase(Walk& walk) {
  const sheet::Worksheets sheets = walk.application().ActiveWorkbook().Worksheets();
  EXPECT_EQ(sheets.Count(), 2);
  EXPECT_EQ(sheets.Item(1).Name(), "Sheet1");
  EXPECT_EQ(sheets.Item(2).Name(), "Second's");
  EXPECT_EQ(sheets.Item("SECOND'S").Name(), "Second's");
  EXPECT_EQ(sheets.Item("sheet1").Range("B2").Value(), Variant(1.0));
}

void aSheetThatIsNotThereIsRefused(Walk& walk) {
  const sheet::Worksheets sheets = walk.application().ActiveWorkbook().Worksheets();
  expectRefusal([&] { static_cast<void>(sheets.Item("Nowhere")); });
  expectRefusal([&] { static_cast<void>(sheets.Item(0)); });
  expectRefusal([&] { static_cast<void>(sheets.Item(3)); });
}

void theActiveSheetIsTheSameFromEverywhere(Walk& walk) {
  EXPECT_EQ(walk.application().ActiveSheet().Name(), "Sheet1");
  EXPECT_EQ(walk.application().ActiveWorkbook().ActiveSheet().Name(), "Sheet1");
}

void aReferenceIsTakenWithAndWithoutItsSheet(Walk& walk) {
  EXPECT_EQ(walk.value("B2"), Variant(1.0));
  EXPECT_EQ(walk.value("$B$2"), Variant(1.0));
  EXPECT_EQ(walk.value("Sheet1!B2"), Variant(1.0));
  EXPECT_EQ(walk.value("'Sheet1'!$B$2"), Variant(1.0));
  EXPECT_EQ(walk.value("'Second''s'!A1"), Variant(42.0));
  EXPECT_EQ(walk.activeSheet().Range("C6").Value(), Variant(50.0));
  EXPECT_EQ(walk.application().ActiveWorkbook().Worksheets().Item(2).Range("A1").Value(), Variant(42.0));
  EXPECT_EQ(walk.range("'Second''s'!A1").Worksheet().Name(), "Second's");
}

void aReferenceThatNamesNoCellsIsRefused(Walk& walk) {
  EXPECT_EQ(walk.value("B2"), Variant(1.0));
  for (const char* reference : {"", "A0", "Nowhere!A1", "B2:", "A1048577", "no such cells"}) {
    SCOPED_TRACE(reference);
    expectRefusal([&] { static_cast<void>(walk.range(reference)); });
  }
}

void theVersionIsANumberOfAtLeastTwelve(Walk& walk) {
  const std::string version = walk.application().Version();
  ASSERT_FALSE(version.empty());
  EXPECT_GE(std::stoi(version), 12) << version;
}

void referencesAreA1UntilTheUserWantsR1C1(Walk& walk) {
  EXPECT_EQ(walk.application().ReferenceStyle(), sheet::referenceStyleA1);
  walk.host().useR1C1();
  EXPECT_EQ(walk.application().ReferenceStyle(), sheet::referenceStyleR1C1);
}

void aReferenceIsBroughtFromR1C1IntoA1(Walk& walk) {
  const auto converted = [&](const char* text) {
    return walk.application().ConvertFormula(text, sheet::referenceStyleR1C1, sheet::referenceStyleA1);
  };
  EXPECT_EQ(converted("R2C1:R3C2"), Variant("$A$2:$B$3"));
  EXPECT_EQ(converted("R2C7"), Variant("$G$2"));
}

void aTextThatIsNoReferenceIsNeverBroughtIntoOne(Walk& walk) {
  const Variant good = walk.application().ConvertFormula("R1C1", sheet::referenceStyleR1C1, sheet::referenceStyleA1);
  EXPECT_EQ(good, Variant("$A$1"));
  // An application may raise here, or answer an error value.
  Variant answer;
  const auto failure = failureOf([&] {
    answer = walk.application().ConvertFormula("R[-1]C", sheet::referenceStyleR1C1, sheet::referenceStyleA1);
  });
  EXPECT_TRUE(failure.has_value() || answer.kind() == Variant::Kind::error);
}

void theScreenRestsWhileUpdatingIsOff(Walk& walk) {
  for (const bool on : {false, true}) {
    walk.application().ScreenUpdating(on);
    walk.expectShown(walk.application(), member::ScreenUpdating, Variant(on));
  }
}

void aMemberThatAnObjectDoesNotHaveIsNotSupported(Walk& walk) {
  const auto numberOf = [](const sheet::Proxy& object, member::Id id) {
    const auto failure =
        failureOf([&] { static_cast<void>(MemberWalk::hostsOwn(object)->invoke(sheet::Access::get, id, {})); });
    return failure ? failure->number() : 0;
  };
  const sheet::Application excel = walk.application();
  EXPECT_EQ(numberOf(excel, member::Legend), runtime::memberNotSupported.number);
  EXPECT_EQ(numberOf(excel.ActiveWorkbook(), member::Legend), runtime::memberNotSupported.number);
  EXPECT_EQ(numberOf(excel.ActiveSheet(), member::Legend), runtime::memberNotSupported.number);
  EXPECT_EQ(numberOf(walk.range("A1"), member::Legend), runtime::memberNotSupported.number);
}

}  // namespace

std::vector<ConformanceCheck> applicationChecks() {
  return {
      {"SheetsAreFoundByPositionAndByNameInWhicheverCase", sheetsAreFoundByPositionAndByNameInWhicheverCase},
      {"ASheetThatIsNotThereIsRefused", aSheetThatIsNotThereIsRefused},
      {"TheActiveSheetIsTheSameFromEverywhere", theActiveSheetIsTheSameFromEverywhere},
      {"AReferenceIsTakenWithAndWithoutItsSheet", aReferenceIsTakenWithAndWithoutItsSheet},
      {"AReferenceThatNamesNoCellsIsRefused", aReferenceThatNamesNoCellsIsRefused},
      {"TheVersionIsANumberOfAtLeastTwelve", theVersionIsANumberOfAtLeastTwelve},
      {"ReferencesAreA1UntilTheUserWantsR1C1", referencesAreA1UntilTheUserWantsR1C1},
      {"AReferenceIsBroughtFromR1C1IntoA1", aReferenceIsBroughtFromR1C1IntoA1},
      {"ATextThatIsNoReferenceIsNeverBroughtIntoOne", aTextThatIsNoReferenceIsNeverBroughtIntoOne},
      {"TheScreenRestsWhileUpdatingIsOff", theScreenRestsWhileUpdatingIsOff},
      {"AMemberThatAnObjectDoesNotHaveIsNotSupported", aMemberThatAnObjectDoesNotHaveIsNotSupported},
  };
}

}  // namespace mervane::tests
