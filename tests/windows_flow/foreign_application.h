#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include <memory>
#include <string>

#include "hosts/workbook/workbook_host.h"
#include "spreadsheet/object.h"

namespace mervane::tests {

/// A spreadsheet application without windows: Workbooks.Open opens a file, and the book that it answers has SaveAs and
/// Close. It holds one open book.
class ForeignApplication final : public sheet::Object, public std::enable_shared_from_this<ForeignApplication> {
 public:
  /// The application as clients have it, with one reference.
  [[nodiscard]] static IDispatch* create();

  /// What the open book's own application answers; raises applicationDefined while no book is open.
  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override;

 private:
  [[nodiscard]] VARIANT workbooks();
  [[nodiscard]] VARIANT open(const std::string& path);
  [[nodiscard]] workbook::WorkbookHost& openBook();

  std::unique_ptr<workbook::WorkbookHost> book_;
};

}  // namespace mervane::tests
