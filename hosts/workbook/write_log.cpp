#include "hosts/workbook/write_log.h"

#include <algorithm>
#include <utility>

#include "hosts/workbook/cell_store.h"

namespace mervane::workbook {

bool WriteLog::wasWritten(CellAddress at) {
  if (lastRuns_ == nullptr || lastColumn_ != at.column) {
    lastColumn_ = at.column;
    lastRuns_ = &runs_[at.column];
  }
  std::vector<Run>& runs = *lastRuns_;
  // OPTIMIZATION: cells are mostly written downwards, which makes one run longer and longer.
  if (!runs.empty() && at.row == runs.back().last + 1) {
    ++runs.back().last;
    return false;
  }
  const auto after = std::upper_bound(runs.begin(), runs.end(), at.row,
                                      [](std::int32_t row, const Run& run) { return row < run.first; });
  if (after != runs.begin()) {
    Run& before = *(after - 1);
    if (at.row <= before.last) return true;
    if (at.row == before.last + 1) {
      ++before.last;
      if (after != runs.end() && after->first == at.row + 1) {
        before.last = after->last;
        runs.erase(after);
      }
      return false;
    }
  }
  if (after != runs.end() && after->first == at.row + 1) {
    --after->first;
    return false;
  }
  runs.insert(after, Run{at.row, at.row});
  return false;
}

void WriteLog::keepOriginal(CellAddress at, std::string shown, std::optional<std::uint32_t> text) {
  originals_.emplace(CellStore::keyOf(at), Original{std::move(shown), text});
}

const std::string* WriteLog::original(CellAddress at) const {
  const auto found = originals_.find(CellStore::keyOf(at));
  return found == originals_.end() ? nullptr : &found->second.shown;
}

std::optional<std::uint32_t> WriteLog::originalText(CellAddress at) const {
  const auto found = originals_.find(CellStore::keyOf(at));
  return found == originals_.end() ? std::nullopt : found->second.text;
}

}  // namespace mervane::workbook
