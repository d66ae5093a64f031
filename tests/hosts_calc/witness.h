#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <cstdint>
#include <memory>
#include <string>

#include "mervane/variant.h"

namespace mervane::tests {

/// A sheet of an open document through the object model that the office keeps for macros of other spreadsheets.
///
/// It shares nothing with our host but the document, so it tells independently what a member of that model should
/// answer. A document has one witness at a time. It is not asked where it is unsound: errors in cells, references to no
/// sheet, places off the sheet, charts. Exceptions of the office come through.
class Witness {
 public:
  Witness(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& document, const std::string& sheet);
  ~Witness();
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;

  [[nodiscard]] Variant value(const std::string& cell) const;
  [[nodiscard]] Variant numberFormat(const std::string& range) const;
  [[nodiscard]] Variant bold(const std::string& range) const;
  [[nodiscard]] Variant fillIndex(const std::string& range) const;
  [[nodiscard]] double fillColor(const std::string& range) const;
  [[nodiscard]] Variant lineWeight(const std::string& range, std::int32_t edge) const;
  [[nodiscard]] double width(const std::string& range) const;
  [[nodiscard]] double left(const std::string& range) const;
  [[nodiscard]] bool autoFilterMode() const;
  /// Whether the row is hidden, by the user or by a filter.
  [[nodiscard]] bool isHidden(std::int32_t row) const;

  /// Draws the line; none of them can be taken away.
  void lineStyle(const std::string& range, std::int32_t edge, std::int32_t style) const;
  void lineWeight(const std::string& range, std::int32_t edge, std::int32_t weight) const;
  /// Ascending, without a header.
  void sort(const std::string& range, const std::string& key) const;
  /// Switches the arrows, as without arguments.
  void autoFilter(const std::string& range) const;
  /// Shows only the rows that meet the criterion, such as ">3", in one column of the table, from 1.
  void filterBy(const std::string& range, std::int32_t column, const std::string& criterion) const;
  void fitColumns(const std::string& range) const;

 private:
  struct Sheet;
  std::unique_ptr<Sheet> sheet_;
};

}  // namespace mervane::tests
