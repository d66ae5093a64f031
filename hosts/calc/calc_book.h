#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "hosts/book/open_book.h"
#include "hosts/calc/book_facts.h"
#include "hosts/calc/calc_cells.h"
#include "hosts/calc/office.h"
#include "hosts/calc/session.h"

namespace mervane::calc {

/// A file that a headless office of its own has open.
class CalcBook final : public hosts::OpenBook {
 public:
  /// Starts the office and opens the file. Raises for a file that is missing or no spreadsheet, and where there is no
  /// office.
  explicit CalcBook(const std::filesystem::path& path);
  ~CalcBook() override;
  CalcBook(const CalcBook&) = delete;
  CalcBook& operator=(const CalcBook&) = delete;

  [[nodiscard]] sheet::ObjectRef application() override { return application_; }
  void activate(std::string_view sheet) override;
  [[nodiscard]] guard::SheetFacts sheetFacts(std::string_view sheet) override { return facts_.sheetFacts(sheet); }
  [[nodiscard]] guard::AreaFacts areaFacts(std::string_view sheet, const CellArea& area) override {
    return facts_.areaFacts(sheet, area);
  }
  [[nodiscard]] guard::SortingFacts sortingFacts(std::string_view sheet, const CellArea& rows) override {
    return facts_.sortingFacts(sheet, rows);
  }
  void save(const std::filesystem::path& target, const hosts::SaveWatch& watch = {}) override;
  [[nodiscard]] std::vector<SheetInfo> sheets() override;
  [[nodiscard]] std::vector<std::string> sheetNames() const override { return cells_.sheetNames(); }
  [[nodiscard]] std::string activeSheetName() const override { return cells_.activeSheetName(); }
  [[nodiscard]] std::optional<CellArea> usedArea(std::string_view sheet) override { return cells_.usedArea(sheet); }
  [[nodiscard]] std::optional<Place> find(std::string_view reference) const override { return cells_.find(reference); }
  [[nodiscard]] std::string cellText(std::string_view sheet, CellAddress at) override {
    return cells_.cellText(sheet, at);
  }
  [[nodiscard]] std::optional<std::string> cellFormula(std::string_view sheet, CellAddress at) override {
    return cells_.cellFormula(sheet, at);
  }
  [[nodiscard]] Variant cellValue(std::string_view sheet, CellAddress at) override {
    return cells_.cellValue(sheet, at);
  }
  [[nodiscard]] Variant cellValueOrEmpty(std::string_view sheet, CellAddress at) override {
    return cells_.cellValueOrEmpty(sheet, at);
  }
  [[nodiscard]] std::vector<CellAddress> commentedCells(std::string_view sheet, const CellArea& area) override {
    return cells_.commentedCells(sheet, area);
  }
  [[nodiscard]] std::optional<CellArea> numericBlock(std::string_view sheet) override {
    return cells_.numericBlock(sheet);
  }
  /// Not kept; raises.
  [[nodiscard]] std::vector<WrittenBlock> written() override;
  [[nodiscard]] const std::vector<std::string>& notes() const override { return notes_; }

 private:
  Office office_;
  uno::Reference<css::frame::XModel> document_;
  std::shared_ptr<Session> session_;
  CalcCells cells_;
  sheet::ObjectRef application_;
  CalcFacts facts_;
  std::vector<std::string> notes_;
};

}  // namespace mervane::calc
