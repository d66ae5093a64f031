#include "tests/hosts_calc/witness.h"

#include <gtest/gtest.h>

#include "mervane/convert.h"
#include "spreadsheet/cell_address.h"
#include "tests/conformance/flow_desk.h"
#include "tests/hosts_calc/calc_under_test.h"

namespace mervane::tests {
namespace {

namespace member = sheet::member;

const Variant offPalette(-1);

/// A value with its kind, for people.
std::string told(const Variant& value) {
  if (value.kind() == Variant::Kind::null) return "mixed";
  if (value.isEmpty()) return "nothing";
  const std::string text = toText(value, englishLocale());
  if (value.getIf<std::string>() != nullptr) return '"' + text + '"';
  return text + (value.kind() == Variant::Kind::boolean ? " (truth)" : "");
}

/// A run on our host, and the office's own object model that looks at the same document.
class WitnessedRun : public testing::Test {
 protected:
  void run(const FlowOptions& options) {
    ASSERT_EQ(desk.clusterize(options), "CLOSE");
    desk.expectQuiet();
    calc().host().flush();
  }
  CalcUnderTest& calc() { return dynamic_cast<CalcUnderTest&>(desk.look().host()); }
  Variant shown(const sheet::Proxy& object, member::Id member) { return desk.look().shown(object, member); }
  sheet::Range range(const std::string& reference) { return desk.look().range(reference); }

  static std::vector<std::string> cellsOf(std::int32_t rows, std::int32_t columns) {
    std::vector<std::string> cells;
    for (std::int32_t row = 1; row <= rows; ++row) {
      for (std::int32_t column = 1; column <= columns; ++column) {
        cells.push_back(sheet::a1(sheet::CellArea{row, column, row, column}));
      }
    }
    return cells;
  }
  void expectSameCells(std::int32_t rows, std::int32_t columns) {
    for (const std::string& cell : cellsOf(rows, columns)) {
      SCOPED_TRACE(cell);
      EXPECT_EQ(told(desk.look().value(cell)), told(witness.value(cell)));
      EXPECT_EQ(told(shown(range(cell), member::NumberFormat)), told(witness.numberFormat(cell)));
      EXPECT_EQ(told(shown(range(cell).Font(), member::Bold)), told(witness.bold(cell)));
      const Variant index = witness.fillIndex(cell);
      // The office tells no index for a colour off the palette, where the application tells the nearest one.
      if (!(index == offPalette)) {
        EXPECT_EQ(told(shown(range(cell).Interior(), member::ColorIndex)), told(index));
      }
      // Nor has it a colour for a cell without a fill, where the application tells white.
      if (index == Variant(sheet::none)) continue;
      EXPECT_EQ(told(shown(range(cell).Interior(), member::Color)), told(Variant(witness.fillColor(cell))));
    }
  }

  FlowDesk desk{calcKind(), std::make_shared<MemberRecord>()};
  Witness witness{calc().document(), "Sheet1"};
};

TEST_F(WitnessedRun, EveryCellHoldsTheSameValueFormatFontAndFillForTheOffice) {
  run({});
  expectSameCells(17, 7);
  // What is compared is not nothing.
  EXPECT_EQ(witness.value("E7"), Variant("Cluster 1 average"));
  EXPECT_EQ(witness.fillIndex("B7"), Variant(36));
  EXPECT_EQ(witness.bold("E7"), Variant(true));
  EXPECT_EQ(witness.numberFormat("D15"), Variant("0.00%"));
}

TEST_F(WitnessedRun, EveryCellOfASortedRunWithAColumnForEachClusterIsTheSameForTheOffice) {
  run({.oneColumn = false, .colors = false, .sort = true});
  expectSameCells(17, 8);
  EXPECT_EQ(witness.fillColor("B7"), 0xEAEAEA);
}

TEST_F(WitnessedRun, ARangeOfBoldAndPlainCellsIsMixedForTheOfficeToo) {
  run({});
  for (const char* cells : {"F1:F6", "F2:F6", "E7:E16"}) {
    EXPECT_EQ(told(shown(range(cells).Font(), member::Bold)), told(witness.bold(cells))) << cells;
  }
  EXPECT_EQ(told(witness.bold("F1:F6")), "mixed");
}

TEST_F(WitnessedRun, TheLinesOfTheBlocksAreAsStrongForTheOffice) {
  run({});
  for (const char* block : {"B7:E8", "B9:E10", "B11:E12", "B13:E14", "D15:E16", "B2:D6"}) {
    for (std::int32_t edge = sheet::edgeLeft; edge <= sheet::insideHorizontal; ++edge) {
      SCOPED_TRACE(std::string(block) + " line " + std::to_string(edge));
      EXPECT_EQ(told(shown(range(block).Borders(edge), member::Weight)), told(witness.lineWeight(block, edge)));
    }
  }
}

TEST_F(WitnessedRun, TheColumnsAreAsWideForTheOfficeAndAsItFitsThemItself) {
  const double before = witness.width("E1");
  run({});
  EXPECT_GT(witness.width("E1"), before + 40.0);
  for (const char* cell : {"A1", "B1", "C1", "D1", "E1", "F1", "G1"}) {
    EXPECT_NEAR(range(cell).Width(), witness.width(cell), 0.1) << cell;
    EXPECT_NEAR(range(cell).Left(), witness.left(cell), 0.1) << cell;
  }
  // It fits them itself, and they stay as the run has left them.
  witness.fitColumns("B1:E1");
  for (const char* cell : {"B1", "C1", "D1", "E1"}) EXPECT_NEAR(range(cell).Width(), witness.width(cell), 0.1) << cell;
}

TEST_F(WitnessedRun, TheFilterOfARunIsOnForTheOfficeAndOffAfterTheNext) {
  run({.autofilter = true});
  EXPECT_TRUE(witness.autoFilterMode());
  run({.autofilter = false});
  EXPECT_FALSE(witness.autoFilterMode());
}

std::vector<MadeSheet> table() {
  return {{"Sheet1",
           {{"Name", "Kind", "Key", "Remark"},
            {"one", true, 3.0, "x"},
            {"two", 2.5, 1.0, {}},
            {"three", "text", 2.0, 7.0},
            {"four", false, 3.0, "X"},
            {"five", {}, -1.0, "y"},
            {"six", 1.0, 1.0, "12"},
            {"seven", 0.0, 2.0, true},
            {"eight", "b", 1.0, 1e300}}}};
}

/// Our host and the office's own object model at the same work, each in a document of its own.
class BesideTheOffice : public testing::Test {
 protected:
  sheet::Application application() { return sheet::Application(ours.application()); }
  sheet::Range range(const std::string& reference) { return application().Range(reference); }
  bool mode() { return application().ActiveSheet().AutoFilterMode(); }
  /// What both documents hold, as the witness sees it.
  void expectSameTables() {
    ours.host().flush();
    for (const char* column : {"A", "B", "C", "D"}) {
      for (int row = 1; row <= 10; ++row) {
        const std::string cell = column + std::to_string(row);
        EXPECT_EQ(told(own.value(cell)), told(witness.value(cell))) << cell;
        EXPECT_EQ(told(range(cell).Value()), told(witness.value(cell))) << cell;
      }
    }
  }

  CalcUnderTest ours{table()};
  CalcUnderTest other{table()};
  Witness own{ours.document(), "Sheet1"};  ///< looks at what our host works in
  Witness witness{other.document(), "Sheet1"};
};

TEST_F(BesideTheOffice, ASortGivesTheOrderOfTheOfficesOwnSort) {
  expectSameTables();
  for (const char* key : {"C2:C9", "B2:B9", "D2:D9", "A2:A9"}) {
    SCOPED_TRACE(key);
    range("A2:D9").Sort(range(key), sheet::ascending);
    witness.sort("A2:D9", key);
    expectSameTables();
  }
  EXPECT_EQ(witness.value("A2"), Variant("eight")) << "the last key was the names";
}

TEST_F(BesideTheOffice, EachReadsTheLinesThatTheOtherDraws) {
  for (const std::int32_t weight : {sheet::weightHairline, sheet::weightThin}) {
    for (std::int32_t edge = sheet::edgeLeft; edge <= sheet::insideHorizontal; ++edge) {
      SCOPED_TRACE(std::to_string(weight) + " line " + std::to_string(edge));
      if (weight == sheet::weightHairline) {
        const sheet::Border bare = range("B2:D5").Borders(edge);
        EXPECT_EQ(told(ours.shown(bare.object(), member::LineStyle)), told(Variant(sheet::none)));
      }
      own.lineStyle("B2:D5", edge, sheet::lineContinuous);
      own.lineWeight("B2:D5", edge, weight);
      ours.host().flush();
      const sheet::Border line = range("B2:D5").Borders(edge);
      EXPECT_EQ(told(ours.shown(line.object(), member::LineStyle)), told(Variant(sheet::lineContinuous)));
      EXPECT_EQ(told(ours.shown(line.object(), member::Weight)), told(Variant(weight)));

      const sheet::Border drawn = range("B7:D9").Borders(edge);
      drawn.LineStyle(sheet::lineContinuous);
      drawn.Weight(weight);
      ours.host().flush();
      EXPECT_EQ(told(own.lineWeight("B7:D9", edge)), told(Variant(weight)));
    }
  }
}

TEST_F(BesideTheOffice, EachSwitchesTheFilterThatTheOtherSees) {
  range("B1").AutoFilter();
  EXPECT_TRUE(own.autoFilterMode());
  own.autoFilter("B1");
  EXPECT_FALSE(mode());
  own.autoFilter("B1");
  EXPECT_TRUE(mode());
  range("B1").AutoFilter();
  EXPECT_FALSE(own.autoFilterMode());
}

}  // namespace
}  // namespace mervane::tests
