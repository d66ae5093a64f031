#pragma once

#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <cstdint>
#include <map>
#include <vector>

#include "hosts/calc/session.h"
#include "mervane/variant.h"

namespace mervane::calc {

/// Numbers and texts that wait to be written, cells that wait to be emptied, and what goes into a cell by itself.
///
/// OPTIMIZATION: values that stand under one another are written by one call.
class ValueBuffer {
 public:
  explicit ValueBuffer(Session& session) : session_(session) {}

  [[nodiscard]] bool isEmpty() const { return columns_.empty(); }
  /// @param value void for a cell that is emptied
  void add(std::int32_t sheet, CellAddress at, const uno::Any& value);
  /// Writes and drops all, even what could not be written.
  /// @param written called with each area that was written
  template <class Written>
  void write(const Written& written) {
    for (const SheetArea& area : writeAll()) written(area);
    raisePending();
  }

 private:
  struct Entry {
    std::int32_t row;
    uno::Any value;
  };
  [[nodiscard]] std::vector<SheetArea> writeAll();
  void writeColumn(std::int32_t sheet, std::int32_t column, std::vector<Entry>& entries,
                   std::vector<SheetArea>& written);
  void writeStretch(const SheetArea& place, const std::vector<uno::Any>& values);
  void writeBlock(const SheetArea& place, const uno::Any* values);
  static void writeOne(const uno::Reference<css::table::XCell>& cell, const uno::Any& value);
  void dropTruthFormats(const SheetArea& area);
  void raisePending();

  Session& session_;
  std::map<std::pair<std::int32_t, std::int32_t>, std::vector<Entry>> columns_;
  std::optional<Failure> failure_;
};

/// What the office is given for a value: a number or a text, or a formula.
struct OfficeValue {
  enum class Kind { plain, empty, formula, truth, date };
  Kind kind = Kind::plain;
  uno::Any value;
};

/// Raises typeMismatch for arrays and objects and for what no cell can hold.
/// @param place the cell, for people
[[nodiscard]] OfficeValue officeValue(const Variant& value, const std::string& place);

}  // namespace mervane::calc
