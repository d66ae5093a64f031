#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/workbook/workbook_host.h"
#include "spreadsheet/application.h"

namespace mervane::workbook::tests {

/// A folder for one test's files, removed with it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

/// The parts of a package by name, in the order in which they are packed.
using Parts = std::vector<std::pair<std::string, std::string>>;

/// A workbook of one sheet "Data" around the XML of its root's children.
struct BookText {
  std::string sheet = "<sheetData/>";
  std::string sharedStrings;       ///< the <si> elements
  std::string styles;              ///< the whole part; a plain one where empty
  std::string workbookExtra;       ///< behind the sheets
  std::string workbookProperties;  ///< in front of the views
  std::string rootAttributes;      ///< of the worksheet
  Parts more;
  std::string sheetRelations;  ///< the <Relationship> elements
  std::string workbookRelations;
  std::string contentTypes;
  [[nodiscard]] Parts parts() const;
};

void writeZip(const std::filesystem::path& path, const Parts& parts);
[[nodiscard]] std::map<std::string, std::string> readZip(const std::filesystem::path& path);

/// Called with the parts of every file that a test saves; empty in a program that does not look at them.
inline void (*whenSaved)(const std::map<std::string, std::string>& parts) = nullptr;
/// The parts of a file that the host has just saved.
[[nodiscard]] std::map<std::string, std::string> savedParts(const std::filesystem::path& path);

/// A workbook that is open, with its folder.
class OpenBook {
 public:
  explicit OpenBook(const BookText& text);
  explicit OpenBook(const Parts& parts);

  [[nodiscard]] WorkbookHost& host() { return *host_; }
  [[nodiscard]] sheet::Application application() { return sheet::Application(host_->application()); }
  [[nodiscard]] sheet::Range range(const std::string& reference) { return application().Range(reference); }
  [[nodiscard]] Variant value(const std::string& reference) { return range(reference).Value(); }
  [[nodiscard]] std::string text(const std::string& cell);
  /// Saves, and answers the parts of the new file.
  [[nodiscard]] std::map<std::string, std::string> saved();
  /// The sheet's part after a save.
  [[nodiscard]] std::string savedSheet() { return saved().at("xl/worksheets/sheet1.xml"); }
  /// Saves, and opens the new file.
  void reopen();
  [[nodiscard]] std::filesystem::path path() const { return folder_ / "book.xlsx"; }

 private:
  TemporaryFolder folder_;
  std::unique_ptr<WorkbookHost> host_;
};

/// The text of the failure that the action raises; empty, with a test failure, where it raises none.
template <class Action>
std::string failureOf(Action&& action, int* number = nullptr);

}  // namespace mervane::workbook::tests

#include <gtest/gtest.h>

#include "mervane/failure.h"

namespace mervane::workbook::tests {

template <class Action>
std::string failureOf(Action&& action, int* number) {
  try {
    action();
  } catch (const Failure& failure) {
    if (number != nullptr) *number = failure.number();
    return failure.description();
  }
  ADD_FAILURE() << "nothing was raised";
  return {};
}

}  // namespace mervane::workbook::tests
