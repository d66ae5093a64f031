#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include <deque>
#include <memory>
#include <span>
#include <string>

#include "hosts/workbook/workbook_host.h"
#include "spreadsheet/object.h"

namespace mervane::tests {

/// A spreadsheet application without windows: Workbooks.Open opens a file, and the book that it answers has SaveAs and
/// Close. It holds one open book. What a user does beside is told to it: `Selects` and `Picks` take references,
/// `Selection` and `InputBox` answer the ranges, and `Asked` tells what was asked and proposed.
class ForeignApplication final : public sheet::Object, public std::enable_shared_from_this<ForeignApplication> {
 public:
  /// The application as clients have it, with one reference.
  [[nodiscard]] static IDispatch* create();

  /// What the open book's own application answers; raises applicationDefined while no book is open.
  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override;

 private:
  [[nodiscard]] VARIANT workbooks();
  [[nodiscard]] VARIANT open(const std::string& path);
  /// A range with what only a running application knows of it; nothing for an empty reference.
  [[nodiscard]] VARIANT range(const std::string& reference);
  [[nodiscard]] VARIANT ask(std::span<const Variant> arguments);
  [[nodiscard]] workbook::WorkbookHost& openBook();

  std::unique_ptr<workbook::WorkbookHost> book_;
  std::string selected_;
  std::deque<std::string> picks_;
  std::string asked_;
};

}  // namespace mervane::tests
