#include "guard/refusal.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/support/test_machine.h"

namespace mervane::guard {
namespace {

/// One sheet of numbers, but for the cells that say otherwise.
struct MadeCells final : BookCells {
  std::map<CellAddress, std::string> texts;
  int shown = 0;

  std::vector<std::string> sheetNames() const override { return {"Data"}; }
  std::string activeSheetName() const override { return "Data"; }
  std::optional<CellArea> usedArea(std::string_view) override { return CellArea{2, 2, 9, 4}; }
  std::optional<Place> find(std::string_view) const override { return Place{"Data", {2, 2, 9, 4}}; }
  std::string cellText(std::string_view, CellAddress at) override {
    ++shown;
    const auto text = texts.find(at);
    return text == texts.end() ? "1" : text->second;
  }
  std::optional<std::string> cellFormula(std::string_view, CellAddress) override { return std::nullopt; }
  Variant cellValue(std::string_view, CellAddress at) override {
    const auto text = texts.find(at);
    return text == texts.end() ? Variant(1.0) : Variant(text->second);
  }
  Variant cellValueOrEmpty(std::string_view sheet, CellAddress at) override { return cellValue(sheet, at); }
  std::vector<CellAddress> commentedCells(std::string_view, const CellArea&) override { return {}; }
  std::optional<CellArea> numericBlock(std::string_view) override { return std::nullopt; }
};

class Refusals : public testing::Test {
 protected:
  std::string why() { return whyRefused(cells, {}, {}, "Data!B2:D9", "Data!F2"); }

  tests::TestMachine machine;
  MadeCells cells;
};

TEST_F(Refusals, NumbersAreNotAskedWhatTheyShow) {
  EXPECT_EQ(why(), "");
  EXPECT_EQ(cells.shown, 0);
}

TEST_F(Refusals, TheFirstCellThatIsNoNumberIsNamedWithWhatItShows) {
  cells.texts[{5, 3}] = "n/a";
  EXPECT_EQ(why(), "Data!C5: text \"n/a\" is not a number");
  EXPECT_EQ(cells.shown, 1);
}

}  // namespace
}  // namespace mervane::guard
