#include "hosts/workbook/cell_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace mervane::workbook {
namespace {

Cell numberCell(double number) {
  Cell cell;
  cell.kind = CellKind::number;
  cell.number = number;
  return cell;
}

void put(CellStore& store, CellAddress at, double number) {
  Cell& cell = store.make(at);
  cell.kind = CellKind::number;
  cell.number = number;
}

/// "1: A=1 C=3; 2: ..." of all rows.
std::string shown(const CellStore& store) {
  std::string text;
  store.forEachRowWithCells([&](std::int32_t row, const Row&, std::span<const CellStore::PlacedCell> cells) {
    text += std::to_string(row) + ":";
    for (const auto& [column, cell] : cells) {
      text += " " + columnLetters(column) + "=" + std::to_string(static_cast<int>(cell->number));
    }
    text += "; ";
  });
  return text;
}

TEST(CellStore, FindsWhatWasMadeInAnyOrderAndNothingElse) {
  // Small areas leave many gaps and large ones few; the seeds are fixed, so that a failure comes back.
  for (const std::int32_t size : {3, 20, 300, 2000}) {
    std::mt19937 random(static_cast<unsigned>(size));
    CellStore store;
    std::map<std::pair<std::int32_t, std::int32_t>, double> expected;
    for (int i = 0; i < 3000; ++i) {
      const CellAddress at{static_cast<std::int32_t>(random() % static_cast<unsigned>(size)) + 1,
                           static_cast<std::int32_t>(random() % 40) + 1};
      put(store, at, i);
      expected[{at.row, at.column}] = i;
    }
    for (std::int32_t row = 1; row <= size + 1; ++row) {
      for (std::int32_t column = 1; column <= 41; ++column) {
        const auto known = expected.find({row, column});
        const Cell* found = store.find({row, column});
        ASSERT_EQ(found != nullptr, known != expected.end()) << row << ", " << column;
        if (found != nullptr) {
          ASSERT_EQ(found->number, known->second) << row << ", " << column;
        }
      }
    }
    EXPECT_EQ(store.cellCount(), expected.size());
  }
}

TEST(CellStore, ReachesTheCornersOfTheSheet) {
  CellStore store;
  const std::vector<CellAddress> corners = {
      {1, 1}, {1, lastSheetColumn}, {lastSheetRow, 1}, {lastSheetRow, lastSheetColumn}};
  for (const CellAddress at : corners) put(store, at, at.column);
  for (const CellAddress at : corners) EXPECT_EQ(store.find(at)->number, at.column);
  EXPECT_EQ(store.find({2, 1}), nullptr);
  EXPECT_EQ(store.find({500, 500}), nullptr);
  EXPECT_EQ(store.usedArea(false), (CellArea{1, 1, lastSheetRow, lastSheetColumn}));
  EXPECT_EQ(store.nextRow(2), lastSheetRow);
}

TEST(CellStore, MakesAMissingCellEmptyAndKeepsAnExistingOne) {
  CellStore store;
  EXPECT_EQ(store.make({4, 2}).kind, CellKind::empty);
  put(store, {4, 2}, 7.0);
  EXPECT_EQ(store.make({4, 2}).number, 7.0);
  EXPECT_EQ(store.cellCount(), 1U);
}

TEST(CellStore, ShowsCellsByRowInTheOrderOfTheirColumns) {
  CellStore store;
  put(store, {300, 3}, 4);
  put(store, {2, 5}, 3);
  put(store, {2, 1}, 1);
  put(store, {2, 3}, 2);
  static_cast<void>(store.makeRow(7));
  EXPECT_EQ(shown(store), "2: A=1 C=2 E=3; 7:; 300: C=4; ");
}

TEST(CellStore, FillsRowsWhoseColumnsDiffer) {
  CellStore store;
  store.fillRow(1, std::vector<ColumnCell>{{2, numberCell(1)}, {4, numberCell(2)}});
  store.fillRow(2, std::vector<ColumnCell>{{1, numberCell(3)}, {3, numberCell(4)}, {5, numberCell(5)}});
  store.fillRow(3, std::vector<ColumnCell>{});
  store.fillRow(4, std::vector<ColumnCell>{{3, numberCell(6)}});
  EXPECT_EQ(shown(store), "1: B=1 D=2; 2: A=3 C=4 E=5; 3:; 4: C=6; ");
}

TEST(CellStore, FillsARowAboveOneThatHasCells) {
  CellStore store;
  put(store, {5, 1}, 5);
  store.fillRow(3, std::vector<ColumnCell>{{1, numberCell(3)}});
  EXPECT_EQ(shown(store), "3: A=3; 5: A=5; ");
  EXPECT_EQ(store.find({3, 1})->number, 3.0);
}

TEST(CellStore, TakesAPieceOfAColumnOutAndPutsItElsewhere) {
  CellStore store;
  for (std::int32_t row = 1; row <= 600; ++row) put(store, {row, 2}, row);
  std::vector<RowCell> taken = store.takeColumn(2, 200, 400);
  ASSERT_EQ(taken.size(), 201U);
  EXPECT_EQ(taken.front().row, 200);
  EXPECT_EQ(taken.back().row, 400);
  EXPECT_EQ(store.find({199, 2})->number, 199.0);
  EXPECT_EQ(store.find({200, 2}), nullptr);
  EXPECT_EQ(store.find({400, 2}), nullptr);
  EXPECT_EQ(store.find({401, 2})->number, 401.0);
  EXPECT_TRUE(store.rowAt(300)->exists);

  // Turned upside down, with one cell missing.
  taken.erase(taken.begin() + 100);
  for (RowCell& one : taken) one.row = 600 - one.row;
  std::reverse(taken.begin(), taken.end());
  store.putColumn(2, taken);
  EXPECT_EQ(store.find({200, 2})->number, 400.0);
  EXPECT_EQ(store.find({400, 2})->number, 200.0);
  EXPECT_EQ(store.find({300, 2}), nullptr);
  EXPECT_EQ(store.find({199, 2})->number, 199.0);
  EXPECT_EQ(store.find({401, 2})->number, 401.0);
}

TEST(CellStore, PutsCellsBetweenThoseThatStay) {
  CellStore store;
  put(store, {2, 1}, 2);
  put(store, {6, 1}, 6);
  store.putColumn(1, std::vector<RowCell>{{1, numberCell(1)}, {4, numberCell(4)}, {9, numberCell(9)}});
  EXPECT_EQ(shown(store), "1: A=1; 2: A=2; 4: A=4; 6: A=6; 9: A=9; ");
}

TEST(CellStore, TellsTheColumnsOfAnArea) {
  CellStore store;
  put(store, {1, 9}, 1);
  put(store, {700, 2}, 1);
  put(store, {700, 12}, 1);
  EXPECT_EQ(store.columnsIn({1, 1, 1000, 10}), (std::vector<std::int32_t>{2, 9}));
}

TEST(CellStore, GoesThroughAnAreaUntilTheBodyHasEnough) {
  CellStore store;
  for (std::int32_t row = 250; row <= 260; ++row) {
    for (std::int32_t column = 1; column <= 3; ++column) put(store, {row, column}, row);
  }
  int seen = 0;
  const CellArea area{255, 2, 257, 9};
  EXPECT_TRUE(store.forEachCell(area, [&](std::int32_t row, std::int32_t column, const Cell& cell) {
    EXPECT_TRUE(area.contains(CellAddress{row, column}));
    EXPECT_EQ(cell.number, row);
    ++seen;
    return true;
  }));
  EXPECT_EQ(seen, 6);
  seen = 0;
  EXPECT_FALSE(store.forEachCell(area, [&](std::int32_t, std::int32_t, const Cell&) { return ++seen < 4; }));
  EXPECT_EQ(seen, 4);
}

TEST(CellStore, CountsCellsWithoutAValueAsUsedOnlyWithFormats) {
  CellStore store;
  EXPECT_EQ(store.usedArea(true), std::nullopt);
  static_cast<void>(store.make({1, 1}));
  put(store, {3, 4}, 1);
  static_cast<void>(store.make({400, 2}));
  EXPECT_EQ(store.usedArea(false), (CellArea{3, 4, 3, 4}));
  EXPECT_EQ(store.usedArea(true), (CellArea{1, 1, 400, 4}));
}

}  // namespace
}  // namespace mervane::workbook
