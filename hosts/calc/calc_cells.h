#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "guard/book_cells.h"

namespace mervane::calc {

class Session;

/// The sheets of a document that the office has open, as programs look at them.
class CalcCells final : public guard::BookCells {
 public:
  explicit CalcCells(std::shared_ptr<Session> session);

  [[nodiscard]] std::vector<std::string> sheetNames() const override;
  [[nodiscard]] std::string activeSheetName() const override;
  [[nodiscard]] std::optional<sheet::CellArea> usedArea(std::string_view sheet) override;
  [[nodiscard]] std::optional<Place> find(std::string_view reference) const override;
  /// Numbers are told without their formats.
  [[nodiscard]] std::string cellText(std::string_view sheet, sheet::CellAddress at) override;
  [[nodiscard]] std::optional<std::string> cellFormula(std::string_view sheet, sheet::CellAddress at) override;
  [[nodiscard]] Variant cellValue(std::string_view sheet, sheet::CellAddress at) override;
  /// The same: the office has every formula computed.
  [[nodiscard]] Variant cellValueOrEmpty(std::string_view sheet, sheet::CellAddress at) override {
    return cellValue(sheet, at);
  }
  /// None: the office's sort takes comments along.
  [[nodiscard]] std::vector<sheet::CellAddress> commentedCells(std::string_view sheet,
                                                               const sheet::CellArea& area) override;
  [[nodiscard]] std::optional<sheet::CellArea> numericBlock(std::string_view sheet) override;

 private:
  [[nodiscard]] std::int32_t position(std::string_view sheet) const;

  std::shared_ptr<Session> session_;
};

}  // namespace mervane::calc
