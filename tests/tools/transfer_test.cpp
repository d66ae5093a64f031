#include <limits>
#include <string>
#include <vector>

#include "tests/support/fake_object.h"
#include "tests/tools/tools_fixture.h"

namespace mervane::tests {

namespace {

class Transfer : public ToolsTest {
 protected:
  Variant copied(const std::string& range) {
    return mTools::Range2ArraySingle(excel.application().Range(range).asVariant());
  }
  void expectRefused(const Variant& value) {
    excel.fill("A1", {{1.0}, {value}});
    expectComponentFailure("Range2ArraySingle", [&] { static_cast<void>(copied("A1:A2")); });
  }
  bool repeated(const std::string& range) {
    std::string reference = range;
    return mTools::RepeatedInputs(excel.application(), reference);
  }
  bool numeric(const std::string& range) {
    std::string reference = range;
    return mTools::AllCellsNumeric(excel.application(), reference);
  }
};

TEST_F(Transfer, BoundsAreThoseOfTheRange) {
  excel.fill("B2", {{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}});
  const Variant cells = copied("B2:C4");
  EXPECT_EQ(cells.array().bounds(), (std::vector<Bounds>{{1, 3}, {1, 2}}));
  ASSERT_NE(cells.array().getIf<float>(), nullptr);
  EXPECT_EQ(cells.array().at(3, 1), Variant(5.0F));
  EXPECT_EQ(cells.array().at(1, 2), Variant(2.0F));
}

TEST_F(Transfer, EmptyCellPassesAllTestsAndCountsAsZero) {
  excel.fill("A1", {{1.0}, {Variant()}});
  EXPECT_EQ(copied("A1:A2").array().at(2, 1), Variant(0.0F));
  EXPECT_TRUE(numeric("A1:A2"));
}

TEST_F(Transfer, TextThatReadsAsANumberPasses) {
  excel.fill("A1", {{"12"}, {true}});
  EXPECT_EQ(copied("A1:A2").array().at(1, 1), Variant(12.0F));
  EXPECT_EQ(copied("A1:A2").array().at(2, 1), Variant(-1.0F));
  EXPECT_TRUE(numeric("A1:A2"));
}

TEST_F(Transfer, TextDatesAndErrorsFailTheCopy) {
  expectRefused("abc");
  expectRefused(Date{45000.0});
  expectRefused(ErrorValue{2042});
}

TEST_F(Transfer, ValueBeyondTheSingleRangeFailsTheCopy) {
  expectRefused(1e300);
}

TEST_F(Transfer, WhatIsNoRangeFailsTheCopy) {
  expectComponentFailure("Range2ArraySingle", [] { static_cast<void>(mTools::Range2ArraySingle(Variant(1.0))); });
  expectComponentFailure("Range2ArraySingle",
                         [] { static_cast<void>(mTools::Range2ArraySingle(sheet::Range().asVariant())); });
}

TEST_F(Transfer, ValuesAreRoundedToSinglePrecision) {
  excel.fill("A1", {{0.1}});
  EXPECT_EQ(copied("A1").array().at(1, 1), Variant(0.1F));
}

TEST_F(Transfer, CopyGoesColumnByColumnAndReadsEachCellTwice) {
  excel.fill("A1", {{1.0, 2.0}, {3.0, 4.0}});
  Recorder record(excel.application().Range("A1:B2").object(), FakeSheet::nameOf);
  static_cast<void>(mTools::Range2ArraySingle(Variant(record.object())));
  EXPECT_EQ(record.calls(),
            (std::vector<std::string>{"get Columns",    "get Columns.Count", "get Rows",       "get Rows.Count",  //
                                      "get Item(1, 1)", "get A1.Value",      "get Item(1, 1)", "get A1.Value",    //
                                      "get Item(2, 1)", "get A2.Value",      "get Item(2, 1)", "get A2.Value",    //
                                      "get Item(1, 2)", "get B1.Value",      "get Item(1, 2)", "get B1.Value",    //
                                      "get Item(2, 2)", "get B2.Value",      "get Item(2, 2)", "get B2.Value"}));
}

TEST_F(Transfer, AnyFailingCallFailsTheCopy) {
  excel.fill("A1", {{1.0}, {2.0}});
  for (int n = 1;; ++n) {
    FaultInjector host(excel.application().Range("A1:A2").object(), n);
    bool failed = false;
    try {
      static_cast<void>(mTools::Range2ArraySingle(Variant(host.object())));
    } catch (const Failure& failure) {
      failed = failure.description() == "mTools component failure";
    }
    EXPECT_EQ(failed, host.triggered()) << "failing call " << n;
    if (!host.triggered()) break;
    ASSERT_LT(n, 50);
  }
}

TEST_F(Transfer, FirstCellThatIsNotNumericEndsTheTest) {
  excel.fill("A1", {{1.0, "abc"}, {2.0, 3.0}});
  Recorder record(excel.object(), FakeSheet::nameOf);
  std::string reference = "A1:B2";
  EXPECT_FALSE(mTools::AllCellsNumeric(sheet::Application(record.object()), reference));
  EXPECT_EQ(record.callsWith("Value"), (std::vector<std::string>{"get A1.Value", "get B1.Value"}));
}

TEST_F(Transfer, FailuresOfTheNumericTestArePassedOver) {
  EXPECT_TRUE(numeric("nonsense"));
  EXPECT_TRUE([] {
    std::string reference = "A1";
    return mTools::AllCellsNumeric(sheet::Application(), reference);
  }());
}

TEST_F(Transfer, ACellThatCannotBeReadIsNotNumeric) {
  excel.fill("A1", {{1.0}, {2.0}});
  FaultInjector host(excel.object(), [](sheet::Access, sheet::member::Id id) { return id == sheet::member::Value; });
  std::string reference = "A1:A2";
  EXPECT_FALSE(mTools::AllCellsNumeric(sheet::Application(host.object()), reference));
}

TEST_F(Transfer, BothTestsWriteTheA1FormBack) {
  excel.fill("A1", {{1.0}, {2.0}});
  excel.referenceStyle = sheet::referenceStyleR1C1;
  excel.convertFormula = [](const std::string&) { return Variant("[Book1]Sheet1!A1:A2"); };
  std::string reference = "R1C1:R2C1";
  EXPECT_TRUE(mTools::AllCellsNumeric(excel.application(), reference));
  EXPECT_EQ(reference, "Sheet1!A1:A2");
  reference = "R1C1:R2C1";
  EXPECT_FALSE(mTools::RepeatedInputs(excel.application(), reference));
  EXPECT_EQ(reference, "Sheet1!A1:A2");
}

TEST_F(Transfer, EqualFirstColumnIsRepeatedWhateverTheOthersHold) {
  excel.fill("A1", {{5.0, 1.0}, {5.0, 2.0}, {5.0, 3.0}});
  EXPECT_TRUE(repeated("A1:B3"));
}

TEST_F(Transfer, FirstColumnWithTwoValuesIsNotRepeatedHoweverAlikeTheOthers) {
  excel.fill("A1", {{5.0, 1.0}, {6.0, 1.0}, {5.0, 1.0}});
  EXPECT_FALSE(repeated("A1:B3"));
}

TEST_F(Transfer, OneRowIsAlwaysRepeated) {
  excel.fill("A1", {{1.0, 2.0, 3.0}});
  EXPECT_TRUE(repeated("A1:C1"));
}

TEST_F(Transfer, TextsOfTheFirstColumnAreRepeatedOnlyAsTheSameTexts) {
  excel.fill("A1", {{"7"}, {"7"}, {"7"}});
  EXPECT_TRUE(repeated("A1:A3"));
  excel.fill("A1", {{"7"}, {"7"}, {"7.0"}});
  EXPECT_FALSE(repeated("A1:A3"));
  excel.fill("A1", {{"7"}, {7.0}});
  EXPECT_FALSE(repeated("A1:A2")) << "a number is below any text";
  excel.fill("A1", {{""}, {Variant()}});
  EXPECT_TRUE(repeated("A1:A2"));
}

TEST_F(Transfer, EmptyCellEqualsZero) {
  excel.fill("A1", {{Variant()}, {0.0}});
  EXPECT_TRUE(repeated("A1:A2"));
}

TEST_F(Transfer, ValuesThatCannotBeComparedFailTheRepetitionTest) {
  excel.fill("A1", {{1.0}, {ErrorValue{2042}}});
  expectComponentFailure("RepeatedInputs", [&] { static_cast<void>(repeated("A1:A2")); });
  expectComponentFailure("RepeatedInputs", [&] { static_cast<void>(repeated("nonsense")); });
}

TEST_F(Transfer, ARangeWithoutColumnsRepeatsNothing) {
  auto columns = std::make_shared<FakeObject>();
  columns->handlers[sheet::member::NewEnum] = [](auto, auto) {
    return asValue(std::make_shared<FakeEnumerator>(std::vector<sheet::ObjectRef>{}));
  };
  auto range = std::make_shared<FakeObject>();
  range->parts[sheet::member::Columns] = columns;
  auto host = std::make_shared<FakeObject>();
  host->handlers[sheet::member::Range] = [&](auto, auto) { return asValue(range); };
  std::string reference = "A1";
  EXPECT_FALSE(mTools::RepeatedInputs(sheet::Application(host), reference));
}

TEST_F(Transfer, RepetitionTestLooksAtTheFirstColumnAlone) {
  excel.fill("A1", {{5.0, 1.0}, {5.0, 2.0}, {5.0, 3.0}});
  Recorder record(excel.object(), FakeSheet::nameOf);
  std::string reference = "A1:B3";
  EXPECT_TRUE(mTools::RepeatedInputs(sheet::Application(record.object()), reference));
  EXPECT_EQ(record.callsWith("Value"), (std::vector<std::string>{"get A1.Value", "get A2.Value", "get A3.Value"}));
}

}  // namespace

}  // namespace mervane::tests
