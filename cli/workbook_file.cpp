#include "cli/workbook_file.h"

#include <algorithm>
#include <array>

#include "cli/byte_source.h"
#include "cli/output_file.h"
#include "cli/problem.h"
#include "mervane/failure.h"

namespace mervane::cli {
namespace {

bool endsIn(const std::string& path, std::string_view ending) {
  if (path.size() < ending.size()) return false;
  return std::equal(ending.begin(), ending.end(), path.end() - static_cast<std::ptrdiff_t>(ending.size()),
                    [](char wanted, char c) { return wanted == (c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c); });
}

/// A failure's sentences as a message and its advice: the first one, and the others.
Problem problemOf(const Failure& failure) {
  const std::string& text = failure.description();
  const std::size_t end = text.find(". ");
  if (end != std::string::npos) return {ExitStatus::fileTrouble, text.substr(0, end), text.substr(end + 2)};
  return {ExitStatus::fileTrouble, text.ends_with('.') ? text.substr(0, text.size() - 1) : text};
}

void copy(const std::string& from, const std::string& to) {
  const auto source = openSource(from);
  const auto target = openOutput(to);
  std::array<char, 65536> block{};
  for (std::size_t count = source->read(block); count > 0; count = source->read(block)) {
    target->write({block.data(), count});
  }
  target->commit();
}

}  // namespace

bool isWorkbookName(const std::string& path) {
  constexpr std::array<std::string_view, 5> endings{".xlsx", ".xlsm", ".xls", ".xlsb", ".ods"};
  return std::ranges::any_of(endings, [&](std::string_view ending) { return endsIn(path, ending); });
}

std::unique_ptr<workbook::WorkbookHost> openWorkbook(const std::string& path) {
  try {
    return workbook::WorkbookHost::open(path);
  } catch (const Failure& failure) {
    throw problemOf(failure);
  }
}

void saveWorkbook(workbook::WorkbookHost& book, const std::string& target, const std::string& backupSuffix) {
  if (!backupSuffix.empty()) copy(target, target + backupSuffix);
  try {
    book.save(target);
  } catch (const Failure& failure) {
    throw problemOf(failure);
  }
}

}  // namespace mervane::cli
