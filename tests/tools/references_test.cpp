#include <string>

#include "tests/tools/tools_fixture.h"

namespace mervane::tests {

namespace {

class References : public ToolsTest {
 protected:
  struct Split {
    bool good;
    std::string sheet = "as it came";
    std::string first = "as it came";
    std::string last = "as it came";
    friend bool operator==(const Split&, const Split&) = default;
  };

  Split split(const std::string& reference) {
    Split result{false};
    result.good = mTools::SplitRangeReference(excel.application(), reference, result.sheet, result.first, result.last);
    return result;
  }
  static Split untouched() { return {false}; }
  static Split emptied() { return {false, "", "", ""}; }
};

TEST_F(References, SingleCellStandsOnTheActiveSheet) {
  EXPECT_EQ(split("A1"), (Split{true, "Sheet1", "A1", ""}));
}

TEST_F(References, SheetAndTwoCellsAreTakenApart) {
  EXPECT_EQ(split("Sheet1!B2:C10"), (Split{true, "Sheet1", "B2", "C10"}));
}

TEST_F(References, CaseOfTheTextIsKeptAndIgnoredInTheLookup) {
  EXPECT_EQ(split("sheet1!b2"), (Split{true, "sheet1", "b2", ""}));
}

TEST_F(References, SheetNamesOfAnyScriptAreFoundInEitherCase) {
  excel.addWorksheet("ДАННЫЕ");
  excel.addWorksheet("Größe");
  EXPECT_EQ(split("данные!A1"), (Split{true, "данные", "A1", ""}));
  EXPECT_EQ(split("'GRÖßE'!A1"), (Split{true, "GRÖßE", "A1", ""}));
}

TEST_F(References, ApostrophesAroundTheSheetAreCutOff) {
  excel.addWorksheet("My Sheet");
  EXPECT_EQ(split("'My Sheet'!A1"), (Split{true, "My Sheet", "A1", ""}));
}

TEST_F(References, DoubledApostropheInTheSheetBecomesOne) {
  excel.addWorksheet("It's");
  EXPECT_EQ(split("'It''s'!A1"), (Split{true, "It's", "A1", ""}));
}

TEST_F(References, AnApostropheAtOneEndOfTheSheetAloneBelongsToItsName) {
  excel.addWorksheet("'Data");
  excel.addWorksheet("Data'");
  EXPECT_EQ(split("'Data!A1"), (Split{true, "'Data", "A1", ""}));
  EXPECT_EQ(split("Data'!A1"), (Split{true, "Data'", "A1", ""}));
}

TEST_F(References, ASheetNameMayBeOneCharacter) {
  excel.addWorksheet("x");
  EXPECT_EQ(split("x!A1"), (Split{true, "x", "A1", ""}));
}

TEST_F(References, UnknownSheetEmptiesTheOutTexts) {
  EXPECT_EQ(split("Nowhere!A1:B2"), emptied());
}

TEST_F(References, TwoApostrophesAloneNameNoSheet) {
  EXPECT_EQ(split("''!A1"), emptied());
}

TEST_F(References, MalformedReferencesLeaveTheOutTextsAlone) {
  for (const char* reference : {"$A$1", "A", "1", "A0", "AAA1", "A65536", "", "A1:B", "A1:", "A1:B2:C3", "A1:B0",
                                "A1:B65536", " A1", "A1 ", "A1\n", "!A1", "\u017F1", "\u212A7", "A\u0661"}) {
    EXPECT_EQ(split(reference), untouched()) << reference;
  }
}

TEST_F(References, LastRowIsOneBelowWhatASheetOnceHad) {
  EXPECT_EQ(split("A65535"), (Split{true, "Sheet1", "A65535", ""}));
  EXPECT_EQ(split("A1:A65535"), (Split{true, "Sheet1", "A1", "A65535"}));
}

TEST_F(References, ColumnsAreLimitedByThePatternAlone) {
  EXPECT_EQ(split("ZZ1"), (Split{true, "Sheet1", "ZZ1", ""}));
}

TEST_F(References, SheetPartIsGreedy) {
  excel.addWorksheet("a!b");
  EXPECT_EQ(split("a!b!A1"), (Split{true, "a!b", "A1", ""}));
}

TEST_F(References, LeadingZerosOfARowStay) {
  EXPECT_EQ(split("A007"), (Split{true, "Sheet1", "A007", ""}));
}

TEST_F(References, ASingleApostropheAsSheetIsAComponentFailure) {
  expectComponentFailure("SplitRangeReference", [&] { static_cast<void>(split("'!A1")); });
}

TEST_F(References, ARowTooLongForAnIntegerIsAComponentFailure) {
  expectComponentFailure("SplitRangeReference", [&] { static_cast<void>(split("A99999999999")); });
  expectComponentFailure("SplitRangeReference", [&] { static_cast<void>(split("A1:B2147483648")); });
}

TEST_F(References, ABadFirstRowIsRefusedBeforeTheSecondIsLookedAt) {
  EXPECT_EQ(split("A0:B99999999999"), untouched());
}

TEST_F(References, AWorkbookThatCannotBeAskedIsAComponentFailure) {
  for (int n = 2;; ++n) {  // The first call is that of ReferenceToA1, which never fails.
    FaultInjector host(excel.object(), n);
    std::string sheet, first, last;
    const auto run = [&] {
      return mTools::SplitRangeReference(sheet::Application(host.object()), "Sheet1!A1", sheet, first, last);
    };
    try {
      EXPECT_TRUE(run());
      EXPECT_FALSE(host.triggered());
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.description(), "mTools component failure") << "failing call " << n;
    }
    if (!host.triggered()) break;
    ASSERT_LT(n, 20);
  }
}

TEST_F(References, SearchForTheSheetEndsAtTheFirstThatFits) {
  excel.addWorksheet("Second");
  excel.addWorksheet("Third");
  Recorder record(excel.object(), FakeSheet::nameOf);
  std::string sheet, first, last;
  ASSERT_TRUE(mTools::SplitRangeReference(sheet::Application(record.object()), "second!A1", sheet, first, last));
  EXPECT_EQ(record.calls(),
            (std::vector<std::string>{"get ReferenceStyle", "get ActiveWorkbook", "get ActiveWorkbook.Worksheets",
                                      "get ActiveWorkbook.Worksheets.Count", "get ActiveWorkbook.Worksheets.Item(1)",
                                      "get Sheet1.Name", "get ActiveWorkbook.Worksheets.Item(2)", "get Second.Name"}));
}

TEST_F(References, ATextOfAMegabyteNeitherOverflowsNorTakesLong) {
  EXPECT_EQ(split(std::string(1'000'000, 'A') + "1"), untouched());
  EXPECT_EQ(split(std::string(1'000'000, '!') + "A1"), emptied());
  EXPECT_EQ(split("Sheet1!A" + std::string(1'000'000, '0') + "1"),
            (Split{true, "Sheet1", "A" + std::string(1'000'000, '0') + "1", ""}));
}

TEST_F(References, R1C1TextIsConvertedAndLosesTheWorkbook) {
  excel.referenceStyle = sheet::referenceStyleR1C1;
  excel.convertFormula = [](const std::string& text) {
    EXPECT_EQ(text, "R1C1");
    return Variant("[Book1]Sheet1!A1");
  };
  EXPECT_EQ(mTools::ReferenceToA1(excel.application(), "R1C1"), "Sheet1!A1");
  EXPECT_EQ(split("R1C1"), (Split{true, "Sheet1", "A1", ""}));
}

TEST_F(References, ClosingApostropheBehindAWorkbookStaysAndFindsNoSheet) {
  excel.addWorksheet("Sheet 1");
  excel.referenceStyle = sheet::referenceStyleR1C1;
  excel.convertFormula = [](const std::string&) { return Variant("'[Book 1]Sheet 1'!A1"); };
  EXPECT_EQ(mTools::ReferenceToA1(excel.application(), "x"), "Sheet 1'!A1");
  EXPECT_EQ(split("x"), emptied());
}

TEST_F(References, OnlyWhatStandsUpToTheFirstClosingBracketIsDropped) {
  excel.referenceStyle = sheet::referenceStyleR1C1;
  excel.convertFormula = [](const std::string&) { return Variant("[Book]1]Sheet]1!A1"); };
  EXPECT_EQ(mTools::ReferenceToA1(excel.application(), "x"), "1]Sheet]1!A1");
}

TEST_F(References, ConversionPassesTheTextAndBothStyles) {
  excel.referenceStyle = sheet::referenceStyleR1C1;
  excel.convertFormula = [](const std::string&) { return Variant("B2"); };
  Recorder record(excel.object());
  EXPECT_EQ(mTools::ReferenceToA1(sheet::Application(record.object()), "R2C2"), "B2");
  EXPECT_EQ(record.calls(),
            (std::vector<std::string>{"get ReferenceStyle", "call ConvertFormula(\"R2C2\", -4150, 1)"}));
}

TEST_F(References, ConversionNeverFails) {
  excel.referenceStyle = sheet::referenceStyleR1C1;
  excel.convertFormula = [](const std::string&) { return Variant(ErrorValue{2015}); };
  EXPECT_EQ(mTools::ReferenceToA1(excel.application(), "nonsense"), "nonsense");
  EXPECT_EQ(mTools::ReferenceToA1(sheet::Application(), "A1"), "A1");
  for (int n = 1; n <= 2; ++n) {
    FaultInjector host(excel.object(), n);
    EXPECT_EQ(mTools::ReferenceToA1(sheet::Application(host.object()), "R1C1"), "R1C1");
    EXPECT_TRUE(host.triggered());
  }
}

TEST_F(References, ReplaceTakesAllMatchesInEitherCase) {
  EXPECT_EQ(mTools::mReplace("abcB", "b", "x"), "axcx");
}

TEST_F(References, ReplaceTakesItsPatternAsAnExpression) {
  EXPECT_EQ(mTools::mReplace("a.b", ".", "x"), "xxx");
  EXPECT_EQ(mTools::mReplace("a1b22", "([a-z])(\\d+)", "$2$1"), "1a22b");
}

TEST_F(References, ReplaceWithAMalformedPatternIsAComponentFailure) {
  expectComponentFailure("mReplace", [] { static_cast<void>(mTools::mReplace("a", "(", "x")); });
}

}  // namespace

}  // namespace mervane::tests
