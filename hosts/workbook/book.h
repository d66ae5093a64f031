#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/package.h"
#include "hosts/workbook/sheet.h"

namespace mervane::workbook {

/// One open workbook: its sheets and what they share, and the charts' view of it.
class Book final : public ChartHost {
 public:
  explicit Book(std::unique_ptr<Package> package);
  ~Book() override;

  [[nodiscard]] Sheet& sheet(std::int32_t position) { return *sheets_[static_cast<std::size_t>(position)]; }
  [[nodiscard]] std::int32_t positionOf(const Sheet& sheet) const;
  [[nodiscard]] ChartService& charts() { return *charts_; }
  [[nodiscard]] BookShared& shared() noexcept { return shared_; }

  /// The cells that a reference names: A1 form with or without a sheet, or a defined name. Without a sheet it is on the
  /// given one. Raises applicationDefined, with the text, where it names none.
  [[nodiscard]] SheetArea resolve(std::string_view reference, std::int32_t sheetWithout) const;

  /// The notation that the workbook was last shown in: 1 for A1, -4150 for R1C1.
  std::int32_t referenceStyle = 1;
  bool screenUpdating = true;

  /// Puts the selection on the area of the active sheet.
  void select(const SheetArea& area);
  [[nodiscard]] CellAddress activeCell();
  /// Sets or, with an empty reference, removes a name of the sheet's own that people do not see.
  void setHiddenName(const Sheet& sheet, std::string_view name, const std::string& reference);

  struct DefinedName {
    std::string name;
    std::string folded;
    std::string reference;
    std::int32_t tabPosition = -1;  ///< of the sheet it belongs to; -1 for the whole workbook
  };
  [[nodiscard]] const std::vector<DefinedName>& names() const noexcept { return names_; }

  void save(const std::filesystem::path& target, const SaveWatch& watch);
  /// Whether anything would be written differently.
  [[nodiscard]] bool changed() const;

  // The charts' view.
  [[nodiscard]] Package& package() override { return *package_; }
  [[nodiscard]] std::int32_t sheetCount() const override { return static_cast<std::int32_t>(sheets_.size()); }
  [[nodiscard]] const std::string& sheetName(std::int32_t position) const override;
  [[nodiscard]] const std::string& sheetPart(std::int32_t position) const override;
  [[nodiscard]] std::optional<std::int32_t> sheetNamed(std::string_view name) const override;
  [[nodiscard]] std::int32_t activeSheet() const override { return active_; }
  void activateSheet(std::int32_t position) override;
  [[nodiscard]] Variant cellValue(std::int32_t position, CellAddress cell) override;
  [[nodiscard]] std::string cellNumberFormat(std::int32_t position, CellAddress cell) override;
  [[nodiscard]] const Geometry& geometry(std::int32_t position) override;
  [[nodiscard]] std::optional<SheetArea> areaOf(const Variant& range) const override;
  [[nodiscard]] sheet::ObjectRef rangeObject(const SheetArea& area) override;
  [[nodiscard]] std::string drawingRelation(std::int32_t position) override;
  void setDrawingRelation(std::int32_t position, const std::string& id) override;
  void requireUnprotectedObjects(std::int32_t position) override;
  void note(std::string text) override;

 private:
  void readWorkbook();
  void readSheets(const pugi::xml_node& root);
  void readNames(const pugi::xml_node& root);
  [[nodiscard]] std::string partOfKind(std::string_view kind) const;
  [[nodiscard]] pugi::xml_node inOrder(std::string_view name);
  void setTabSelected(Sheet& sheet, bool selected);
  [[nodiscard]] bool isHidden(std::int32_t position) const;
  void writeSheets();
  void writeStyles();
  void writeWorkbook();
  void syncTableHeaders(Sheet& sheet);

  std::unique_ptr<Package> package_;
  std::string workbookPart_;
  pugi::xml_document workbook_;
  bool workbookChanged_ = false;
  BookShared shared_;
  std::string stylesPart_;
  std::vector<std::unique_ptr<Sheet>> sheets_;
  std::vector<std::string> foldedNames_;
  std::vector<DefinedName> names_;
  std::int32_t active_ = 0;
  std::int32_t firstActive_ = 0;  ///< of the file
  std::unique_ptr<ChartService> charts_;
};

}  // namespace mervane::workbook
