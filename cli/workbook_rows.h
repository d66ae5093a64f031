#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/output_formats.h"
#include "hosts/book/open_book.h"

namespace mervane::cli {

/// The rows of a range as a data file holds them, with whatever else stands on them, as they were before the run.
class WorkbookRows {
 public:
  WorkbookRows(hosts::OpenBook& book, const hosts::OpenBook::Place& inputs);

  /// What a person calls the columns of the inputs: the texts above them, or their letters.
  [[nodiscard]] const std::vector<std::string>& inputNames() const { return inputNames_; }
  /// Writes rows and cluster numbers as the data files' formats do.
  void write(Format format, char delimiter, const std::string& wishedName, const std::vector<std::int32_t>& labels,
             OutputFile& out) const;

 private:
  std::string text_;
  std::vector<std::size_t> inputs_;
  std::vector<std::string> inputNames_;
};

/// The texts over the columns of a range where each has one, their letters where not.
[[nodiscard]] std::vector<std::string> columnNames(hosts::OpenBook& book, const hosts::OpenBook::Place& place);

}  // namespace mervane::cli
