#include "hosts/book/numeric_blocks.h"

namespace mervane::hosts {

void NumericBlocks::closeBefore(std::int32_t row) {
  std::erase_if(open_, [&](const auto& one) {
    if (one.second.lastRow >= row - 1) return false;
    blocks_.push_back(one.second);
    return true;
  });
}

void NumericBlocks::addRun(std::int32_t row, std::int32_t firstColumn, std::int32_t lastColumn) {
  closeBefore(row);
  const auto [place, isNew] =
      open_.try_emplace({firstColumn, lastColumn}, sheet::CellArea{row, firstColumn, row, lastColumn});
  if (!isNew) place->second.lastRow = row;
}

std::optional<sheet::CellArea> NumericBlocks::largest() {
  closeBefore(sheet::lastSheetRow + 2);
  std::optional<sheet::CellArea> best;
  bool isAlone = true;
  for (const sheet::CellArea& block : blocks_) {
    if (block.rows() < 2) continue;
    if (!best || block.cells() > best->cells()) {
      best = block;
      isAlone = true;
    } else if (block.cells() == best->cells()) {
      isAlone = false;
    }
  }
  return isAlone ? best : std::nullopt;
}

}  // namespace mervane::hosts
