#include "tests/conformance/flow_desk.h"

namespace mervane::tests {

namespace {

using Texts = std::vector<std::string>;

/// Expects the run to be refused with this one message, and the sheet to be as it was.
void expectRefused(FlowDesk& desk, const FlowOptions& options, const std::string& message) {
  SCOPED_TRACE(options.input + " to " + options.output);
  const std::vector<Variant> before = desk.values("A1:H9");
  const std::size_t shown = desk.messages().size();
  EXPECT_EQ(desk.clusterize(options), "INVALIDDATA");
  ASSERT_EQ(desk.messages().size(), shown + 1);
  EXPECT_EQ(desk.messages().back(), message);
  EXPECT_EQ(desk.reports(), Texts());
  EXPECT_EQ(desk.values("A1:H9"), before);
  EXPECT_TRUE(desk.chartTitles().empty());
  EXPECT_FALSE(desk.look().activeSheet().AutoFilterMode());
}

void aReferenceThatIsNoneIsRefused(FlowDesk& desk) {
  for (const char* input : {"", "B2:", "B0:C6", "$B$2:$C$6", "AAA2:AAA6", "B2:C65536", "Sheet1!B65536", "B70000:C70001",
                            "Nowhere!B2:C6", "'Nowhere at all'!B2:C6"}) {
    expectRefused(desk, {.input = input}, "Invalid cell reference.");
  }
  for (const char* output : {"", "F70000", "Nowhere!F2", "F", "$F$2"}) {
    expectRefused(desk, {.output = output}, "Invalid cell reference.");
  }
}

void aTextADateAnErrorAndAHugeNumberAreRefused(FlowDesk& desk) {
  desk.write("C4", Variant("n/a"));
  expectRefused(desk, {}, "mTools component failure");
  desk.write("C4", Variant("=NA()"));
  expectRefused(desk, {}, "mTools component failure");
  desk.write("C4", Variant(1e300));
  expectRefused(desk, {}, "mTools component failure");
  desk.write("C4", Variant(45000.0));
  desk.look().range("C4").NumberFormat("yyyy\\-mm\\-dd");
  expectRefused(desk, {}, "mTools component failure");
}

void aFirstColumnOfOneValueIsRefused(FlowDesk& desk) {
  expectRefused(desk, {.input = "B2:D2"}, "Cannot clusterize equal values");
  for (const char* cell : {"B2", "B3", "B4", "B5", "B6"}) desk.write(cell, Variant(7.0));
  expectRefused(desk, {}, "Cannot clusterize equal values");
}

void onlyTheFirstColumnHasToDiffer(FlowDesk& desk) {
  for (const char* cell : {"C2", "C3", "C4", "C5", "C6"}) desk.write(cell, Variant(7.0));
  EXPECT_EQ(desk.clusterize(), "CLOSE");
  desk.expectQuiet();
}

void theSheetOfAReferenceIsFoundInWhicheverCase(FlowDesk& desk) {
  EXPECT_EQ(desk.clusterize({.input = "sheet1!b2:d6", .output = "f2"}), "CLOSE");
  desk.expectQuiet();
  EXPECT_EQ(desk.texts("F1:F2"), (Texts{"Clusters", "1"}));
}

void afterARefusalTheNextRunIsAsEver(FlowDesk& desk) {
  desk.write("C4", Variant("n/a"));
  expectRefused(desk, {}, "mTools component failure");
  desk.write("C4", Variant(40.0));
  EXPECT_EQ(desk.clusterize(), "CLOSE");
  EXPECT_EQ(desk.texts("F1:F6"), (Texts{"Clusters", "1", "2", "1", "1", "2"}));
  EXPECT_EQ(desk.messages().size(), 1U);
}

}  // namespace

std::vector<FlowCheck> flowRefusalChecks() {
  return {
      {"AReferenceThatIsNoneIsRefused", aReferenceThatIsNoneIsRefused},
      {"ATextADateAnErrorAndAHugeNumberAreRefused", aTextADateAnErrorAndAHugeNumberAreRefused},
      {"AFirstColumnOfOneValueIsRefused", aFirstColumnOfOneValueIsRefused},
      {"OnlyTheFirstColumnHasToDiffer", onlyTheFirstColumnHasToDiffer},
      {"TheSheetOfAReferenceIsFoundInWhicheverCase", theSheetOfAReferenceIsFoundInWhicheverCase},
      {"AfterARefusalTheNextRunIsAsEver", afterARefusalTheNextRunIsAsEver},
  };
}

}  // namespace mervane::tests
