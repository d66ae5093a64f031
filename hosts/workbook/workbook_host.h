#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/book/open_book.h"
#include "hosts/workbook/cell_address.h"
#include "hosts/workbook/file_bytes.h"
#include "spreadsheet/object.h"

namespace mervane::workbook {

/// A workbook file as a spreadsheet in this process. Objects that come from `application()` may be held longer than the
/// host but not be used any more then.
class WorkbookHost final : public hosts::OpenBook {
 public:
  /// Raises fileNotFound, pathFileAccess or applicationDefined with a text that names the file and says what to do.
  [[nodiscard]] static std::unique_ptr<WorkbookHost> open(const std::filesystem::path& path);
  ~WorkbookHost() override;
  WorkbookHost(const WorkbookHost&) = delete;
  WorkbookHost& operator=(const WorkbookHost&) = delete;

  [[nodiscard]] sheet::ObjectRef application() override;
  void activate(std::string_view sheet) override;
  [[nodiscard]] guard::SheetFacts sheetFacts(std::string_view sheet) override;
  [[nodiscard]] guard::AreaFacts areaFacts(std::string_view sheet, const CellArea& area) override;
  [[nodiscard]] guard::SortingFacts sortingFacts(std::string_view sheet, const CellArea& rows) override;
  /// Parts that nothing changed stay byte for byte.
  void save(const std::filesystem::path& target, const SaveWatch& watch = {}) override;
  [[nodiscard]] std::vector<SheetInfo> sheets() override;
  [[nodiscard]] std::vector<std::string> sheetNames() const override;
  [[nodiscard]] std::string activeSheetName() const override;
  [[nodiscard]] std::optional<CellArea> usedArea(std::string_view sheet) override;
  [[nodiscard]] std::optional<Place> find(std::string_view reference) const override;
  [[nodiscard]] std::string cellText(std::string_view sheet, CellAddress at) override;
  [[nodiscard]] std::optional<std::string> cellFormula(std::string_view sheet, CellAddress at) override;
  [[nodiscard]] Variant cellValue(std::string_view sheet, CellAddress at) override;
  [[nodiscard]] Variant cellValueOrEmpty(std::string_view sheet, CellAddress at) override;
  [[nodiscard]] std::vector<CellAddress> commentedCells(std::string_view sheet, const CellArea& area) override;
  [[nodiscard]] std::optional<CellArea> numericBlock(std::string_view sheet) override;
  [[nodiscard]] std::vector<WrittenBlock> written() override;
  [[nodiscard]] std::vector<std::string> cannotBeKept() const override;
  [[nodiscard]] const std::vector<std::string>& notes() const override;

 private:
  struct Data;
  explicit WorkbookHost(std::unique_ptr<Data> data);
  std::unique_ptr<Data> data_;
};

}  // namespace mervane::workbook
