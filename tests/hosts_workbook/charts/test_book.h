#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/package.h"
#include "spreadsheet/application.h"

namespace mervane::tests {

/// A range of the test book: nothing but the cells that it stands for.
class TestRange : public sheet::Object {
 public:
  explicit TestRange(workbook::SheetArea cells) : area(cells) {}
  Variant invoke(sheet::Access, sheet::member::Id, std::span<const Variant>) override;
  workbook::SheetArea area;
};

/// Columns of 48 points and rows of 15 points.
class EvenGeometry : public workbook::Geometry {
 public:
  double columnLeft(std::int32_t column) const override { return 48.0 * (column - 1); }
  double columnWidth(std::int32_t) const override { return 48.0; }
  double rowTop(std::int32_t row) const override { return 15.0 * (row - 1); }
  double rowHeight(std::int32_t) const override { return 15.0; }
};

/// The path of a file in the folder `books`.
[[nodiscard]] std::filesystem::path bookPath(const std::string& name);

/// A workbook with its charts and just enough of everything else: cells as the file has them, even columns and
/// rows, and a drawing element that is put at the end of the sheet.
class TestBook : public workbook::ChartHost {
 public:
  explicit TestBook(const std::filesystem::path& path);

  workbook::ChartService& charts() { return *service_; }
  /// The typed objects as the system has them.
  sheet::Charts newCharts() { return sheet::Charts(service_->charts()); }
  sheet::Chart activeChart() { return sheet::Chart(service_->activeChart()); }
  std::vector<sheet::ChartObject> chartObjects(std::int32_t sheet = 0);
  std::vector<sheet::Shape> shapes(std::int32_t sheet = 0);
  sheet::Range range(std::int32_t sheet, const std::string& area);
  void setCell(std::int32_t sheet, workbook::CellAddress cell, Variant value) {
    cells_[{sheet, cell}] = std::move(value);
  }

  /// Writes the charts and saves the file in the folder for temporary files, under a name of this process.
  std::filesystem::path save(const std::string& name);

  workbook::Package& package() override { return *package_; }
  std::int32_t sheetCount() const override { return static_cast<std::int32_t>(names_.size()); }
  const std::string& sheetName(std::int32_t sheet) const override { return names_.at(static_cast<std::size_t>(sheet)); }
  const std::string& sheetPart(std::int32_t sheet) const override { return parts_.at(static_cast<std::size_t>(sheet)); }
  std::optional<std::int32_t> sheetNamed(std::string_view name) const override;
  std::int32_t activeSheet() const override { return active_; }
  void activateSheet(std::int32_t sheet) override { active_ = sheet; }
  Variant cellValue(std::int32_t sheet, workbook::CellAddress cell) override;
  std::string cellNumberFormat(std::int32_t, workbook::CellAddress) override { return numberFormat; }
  const workbook::Geometry& geometry(std::int32_t) override { return geometry_; }
  std::optional<workbook::SheetArea> areaOf(const Variant& range) const override;
  sheet::ObjectRef rangeObject(const workbook::SheetArea& area) override { return std::make_shared<TestRange>(area); }
  std::string drawingRelation(std::int32_t sheet) override;
  void setDrawingRelation(std::int32_t sheet, const std::string& id) override;
  void requireUnprotectedObjects(std::int32_t sheet) override;
  void note(std::string text) override { notes.push_back(std::move(text)); }

  std::vector<std::string> notes;
  std::string numberFormat = "0.00%";
  bool isProtected = false;

 private:
  void readSheets();
  void readCells(std::int32_t sheet, const std::vector<std::string>& texts);

  std::unique_ptr<workbook::Package> package_;
  std::vector<std::string> names_;
  std::vector<std::string> parts_;
  std::map<std::pair<std::int32_t, workbook::CellAddress>, Variant> cells_;
  EvenGeometry geometry_;
  std::int32_t active_ = 0;
  std::unique_ptr<workbook::ChartService> service_;
};

}  // namespace mervane::tests
