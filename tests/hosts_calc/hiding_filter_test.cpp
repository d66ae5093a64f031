#include <gtest/gtest.h>

#include "tests/conformance/flow_desk.h"
#include "tests/hosts_calc/calc_under_test.h"
#include "tests/hosts_calc/witness.h"

namespace mervane::tests {
namespace {

using Rows = std::vector<std::int32_t>;

/// A run on a sheet where the user has a filter on that hides the first two rows of the input.
class HidingFilter : public testing::Test {
 protected:
  void SetUp() override {
    look();
    witness->autoFilter("A1:D6");
    witness->filterBy("A1:D6", 2, ">3");
    ASSERT_TRUE(witness->autoFilterMode());
    ASSERT_EQ(hiddenRows(), (Rows{2, 3}));
  }
  CalcUnderTest& calc() { return dynamic_cast<CalcUnderTest&>(desk.look().host()); }
  /// Has the witness look at the document that is open now.
  void look() { witness = std::make_unique<Witness>(calc().document(), "Sheet1"); }
  Rows hiddenRows() {
    calc().host().flush();
    Rows rows;
    for (std::int32_t row = 1; row <= 17; ++row) {
      if (witness->isHidden(row)) rows.push_back(row);
    }
    return rows;
  }
  bool isOn() {
    calc().host().flush();
    return witness->autoFilterMode();
  }
  void run(const FlowOptions& options) {
    ASSERT_EQ(desk.clusterize(options), "CLOSE");
    desk.expectQuiet();
  }
  /// Expects the cells to be what the same run leaves on a sheet without a filter.
  void expectAsWithoutFilter(const FlowOptions& options) {
    FlowDesk plain(calcKind(), std::make_shared<MemberRecord>());
    ASSERT_EQ(plain.clusterize(options), "CLOSE");
    EXPECT_EQ(desk.values("A1:G17"), plain.values("A1:G17"));
    EXPECT_EQ(desk.fills("A1:G17"), plain.fills("A1:G17"));
    EXPECT_EQ(desk.chartTitles(), plain.chartTitles());
  }

  FlowDesk desk{calcKind(), std::make_shared<MemberRecord>()};
  std::unique_ptr<Witness> witness;
};

TEST_F(HidingFilter, StaysOnWithItsRowsHiddenAndTheHiddenRowsAreClusteredToo) {
  const FlowOptions options{.autofilter = true};
  run(options);
  EXPECT_TRUE(isOn());
  EXPECT_EQ(hiddenRows(), (Rows{2, 3}));
  EXPECT_EQ(desk.texts("F1:F6"), (std::vector<std::string>{"Clusters", "1", "2", "1", "1", "2"}));
  expectAsWithoutFilter(options);
}

TEST_F(HidingFilter, GoesWithARunWithoutFilterAndAllRowsAreShown) {
  const FlowOptions options;
  run(options);
  EXPECT_FALSE(isOn());
  EXPECT_EQ(hiddenRows(), Rows{});
  expectAsWithoutFilter(options);
}

TEST_F(HidingFilter, LetsASortMoveTheHiddenRowsLikeAllOthers) {
  const FlowOptions options{.sort = true};
  run(options);
  EXPECT_EQ(desk.texts("A2:A6"), (std::vector<std::string>{"a", "c", "d", "b", "e"}));
  EXPECT_EQ(hiddenRows(), Rows{});
  expectAsWithoutFilter(options);
}

TEST_F(HidingFilter, StaysOnThroughASort) {
  const FlowOptions options{.autofilter = true, .sort = true};
  run(options);
  EXPECT_TRUE(isOn());
  EXPECT_EQ(desk.texts("A2:A6"), (std::vector<std::string>{"a", "c", "d", "b", "e"}));
  EXPECT_EQ(hiddenRows(), (Rows{2, 5})) << "rows a and b are the hidden ones still";
  expectAsWithoutFilter(options);
}

TEST_F(HidingFilter, IsInTheSavedFileWithTheResults) {
  run({.autofilter = true});
  for (const char* ending : {".ods", ".xlsx"}) {
    witness.reset();
    calc().reopenAs(ending);
    look();
    EXPECT_TRUE(isOn()) << ending;
    EXPECT_TRUE(desk.look().activeSheet().AutoFilterMode()) << ending;
    EXPECT_EQ(hiddenRows(), (Rows{2, 3})) << ending;
    EXPECT_EQ(desk.texts("F1:F6"), (std::vector<std::string>{"Clusters", "1", "2", "1", "1", "2"})) << ending;
  }
}

}  // namespace
}  // namespace mervane::tests
