#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

/// Which cells of a sheet were given values, and what they held before the first time.
class WriteLog {
 public:
  struct Run {
    std::int32_t first;
    std::int32_t last;
  };

  /// Whether the cell was written before; if not, it counts as written from now on.
  bool wasWritten(CellAddress at);
  /// @param text the number of the text that the cell held, if it held one.
  void keepOriginal(CellAddress at, std::string shown, std::optional<std::uint32_t> text);

  /// Runs of rows by column, in order.
  [[nodiscard]] const std::map<std::int32_t, std::vector<Run>>& runs() const noexcept { return runs_; }
  /// What the cell showed before; null where it was empty.
  [[nodiscard]] const std::string* original(CellAddress at) const;
  /// The number of the text that it held before.
  [[nodiscard]] std::optional<std::uint32_t> originalText(CellAddress at) const;

 private:
  std::map<std::int32_t, std::vector<Run>> runs_;
  std::int32_t lastColumn_ = 0;
  std::vector<Run>* lastRuns_ = nullptr;
  struct Original {
    std::string shown;
    std::optional<std::uint32_t> text;
  };
  std::unordered_map<std::uint64_t, Original> originals_;
};

}  // namespace mervane::workbook
