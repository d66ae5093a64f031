#include "cli/workbook_file.h"

#include <algorithm>
#include <array>
#include <optional>

#include "cli/calc_module.h"
#include "cli/interruption.h"
#include "cli/paths.h"
#include "cli/problem.h"
#include "cli/target_file.h"
#include "cli/text_display.h"
#include "hosts/workbook/workbook_host.h"
#include "mervane/failure.h"

namespace mervane::cli {
namespace {

constexpr std::array<std::string_view, 2> ownEndings{".xlsx", ".xlsm"};
constexpr std::array<std::string_view, 4> officeEndings{".xls", ".xlsb", ".ods", ".fods"};

template <std::size_t count>
bool endsInAny(const std::string& path, const std::array<std::string_view, count>& endings) {
  return std::ranges::any_of(endings, [&](std::string_view ending) { return nameEndsIn(path, ending); });
}

}  // namespace

bool nameEndsIn(const std::string& path, std::string_view ending) {
  if (path.size() < ending.size()) return false;
  return std::equal(ending.begin(), ending.end(), path.end() - static_cast<std::ptrdiff_t>(ending.size()),
                    [](char wanted, char c) { return wanted == (c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c); });
}

bool isWorkbookName(const std::string& path) {
  return endsInAny(path, ownEndings) || endsInAny(path, officeEndings);
}

Problem fileTrouble(const std::string& path, const Failure& failure) {
  // Its first sentence is the message, the others are the advice.
  std::string text = failure.description();
  if (text.find(path) == std::string::npos) text = printable(path) + ": " + text;
  const std::size_t end = text.find(". ");
  if (end != std::string::npos) return {ExitStatus::fileTrouble, text.substr(0, end), text.substr(end + 2)};
  return {ExitStatus::fileTrouble, text.ends_with('.') ? text.substr(0, text.size() - 1) : text};
}

bool isForCalc(const std::string& path, BookHost host) {
  if (host != BookHost::byName) return host == BookHost::calc;
  return endsInAny(path, officeEndings) && hasCalcModule();
}

bool isOfficeOutput(const std::string& path) {
  return endsInAny(path, ownEndings) || (endsInAny(path, officeEndings) && !nameEndsIn(path, ".xlsb"));
}

std::unique_ptr<hosts::OpenBook> openWorkbook(const std::string& path, BookHost host) {
  try {
    if (isForCalc(path, host)) return openWithCalc(path);
    return workbook::WorkbookHost::open(toPath(path));
  } catch (const Failure& failure) {
    const Problem problem = fileTrouble(path, failure);
    if (!endsInAny(path, officeEndings) || isForCalc(path, host)) throw problem;
    throw Problem(problem.status(), problem.message(), problem.advice() + " Or let LibreOffice open it: --host calc.");
  }
}

std::string saveWorkbook(hosts::OpenBook& book, const std::string& target, const TargetFile& watched,
                         const std::string& backupSuffix) {
  std::optional<SafetyCopy> copy;
  if (!backupSuffix.empty()) copy.emplace(target, backupSuffix);
  const auto guard = [](const std::filesystem::path& unfinished) {
    if (unfinished.empty()) {
      interruption::releaseFile();
    } else {
      interruption::guardFile(toText(unfinished));
    }
  };
  try {
    book.save(toPath(target), {.unfinished = guard, .beforeReplacing = [&] { watched.requireUntouched(); }});
  } catch (const Failure& failure) {
    throw fileTrouble(target, failure);
  }
  if (!copy) return {};
  copy->keep();
  return copy->path();
}

}  // namespace mervane::cli
