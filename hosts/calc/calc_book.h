#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "hosts/book/open_book.h"
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
  void save(const std::filesystem::path& target, const hosts::UnfinishedFile& unfinished = {}) override;
  [[nodiscard]] std::vector<SheetInfo> sheets() override;
  [[nodiscard]] std::vector<std::string> sheetNames() const override;
  [[nodiscard]] std::string activeSheetName() const override;
  [[nodiscard]] std::optional<CellArea> usedArea(std::string_view sheet) override;
  [[nodiscard]] std::optional<Place> find(std::string_view reference) const override;
  /// Numbers are told without their formats.
  [[nodiscard]] std::string cellText(std::string_view sheet, CellAddress at) override;
  [[nodiscard]] std::optional<std::string> cellFormula(std::string_view sheet, CellAddress at) override;
  [[nodiscard]] Variant cellValue(std::string_view sheet, CellAddress at) override;
  /// The same: the office has every formula computed.
  [[nodiscard]] Variant cellValueOrEmpty(std::string_view sheet, CellAddress at) override {
    return cellValue(sheet, at);
  }
  /// None: the office's sort takes comments along.
  [[nodiscard]] std::vector<CellAddress> commentedCells(std::string_view sheet, const CellArea& area) override;
  [[nodiscard]] std::optional<CellArea> numericBlock(std::string_view sheet) override;
  /// Not kept; raises.
  [[nodiscard]] std::vector<WrittenBlock> written() override;
  [[nodiscard]] const std::vector<std::string>& notes() const override { return notes_; }

 private:
  [[nodiscard]] std::int32_t position(std::string_view sheet) const;

  Office office_;
  uno::Reference<css::frame::XModel> document_;
  std::shared_ptr<Session> session_;
  sheet::ObjectRef application_;
  std::vector<std::string> notes_;
};

}  // namespace mervane::calc
