#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "spreadsheet/application.h"
#include "tests/support/fake_chart.h"

namespace mervane::tests {

/// One cell as the in-memory host keeps it; a format that was never set is empty.
struct FakeCell {
  Variant value;
  bool bold = false;
  std::string numberFormat;
  std::optional<std::int32_t> pattern;
  std::optional<std::int32_t> colorIndex;
  std::optional<std::int32_t> color;
};

/// Something that floats over the cells: a chart, or a picture where there is none.
struct FakeShape {
  std::shared_ptr<FakeChart> chart;
  double left = 0, top = 0, width = 100, height = 100;
};

struct FakeWorksheet {
  using Position = std::pair<std::int32_t, std::int32_t>;

  std::string name;
  std::map<Position, FakeCell> cells;
  std::vector<std::shared_ptr<FakeShape>> shapes;
  bool autoFilterMode = false;
  std::string autoFilterRange;                                               ///< where the arrows were last switched
  std::set<std::int32_t> fittedColumns;                                      ///< by AutoFit
  std::map<std::string, std::map<sheet::member::Id, std::int32_t>> borders;  ///< by address and index, "B7:E8 edge 7"
};

/// A spreadsheet application in memory, complete enough for everything that the system does to one. Columns are 48
/// points wide, rows 12.75 high; there are 1,048,576 rows and 16,384 columns.
class FakeSheet {
 public:
  /// One worksheet, "Sheet1".
  FakeSheet();
  /// Lets the charts go, whose series refer back to the cells of their sheet.
  ~FakeSheet();
  FakeSheet(const FakeSheet&) = delete;
  FakeSheet& operator=(const FakeSheet&) = delete;

  [[nodiscard]] sheet::ObjectRef object() const { return application_; }
  [[nodiscard]] sheet::Application application() const { return sheet::Application(application_); }
  /// The worksheet by name, or the active one for the empty text.
  [[nodiscard]] FakeWorksheet& worksheet(const std::string& name = {});
  FakeWorksheet& addWorksheet(const std::string& name);

  /// A cell of the active sheet by its address.
  [[nodiscard]] FakeCell& cell(const std::string& address);
  [[nodiscard]] Variant value(const std::string& address) { return cell(address).value; }
  [[nodiscard]] std::string text(const std::string& address) { return toText(value(address), englishLocale()); }
  /// Writes rows of values from a cell of the active sheet on.
  void fill(const std::string& address, const std::vector<std::vector<Variant>>& rows);
  /// The value of each cell of a range of the active sheet, row by row.
  [[nodiscard]] std::vector<Variant> values(const std::string& range);

  /// A chart of the user's on the active sheet, with or without a title.
  std::shared_ptr<FakeChart> addChart(const std::optional<std::string>& title);
  void addPicture();
  /// The charts of the active sheet in their order.
  [[nodiscard]] std::vector<std::shared_ptr<FakeChart>> charts();
  /// The one chart with that title; raises where there is none.
  [[nodiscard]] std::shared_ptr<FakeChart> chart(const std::string& title);
  /// The frame of the chart with that title.
  [[nodiscard]] FakeShape& shape(const std::string& title);

  /// What a Recorder calls the objects of this host.
  [[nodiscard]] static std::string nameOf(const sheet::Object& object);

  std::vector<std::shared_ptr<FakeWorksheet>> worksheets;
  std::size_t activeSheet = 0;
  std::shared_ptr<FakeChart> activeChart;
  Variant version = Variant("16.0");
  std::int32_t referenceStyle = sheet::referenceStyleA1;
  /// Answers ConvertFormula.
  std::function<Variant(const std::string&)> convertFormula;
  std::vector<bool> screenUpdating;  ///< what it was set to, in order
  std::string selection;
  std::int32_t guessedSeries = 0;  ///< series that a new chart brings along
  bool formulasAreEmpty = false;   ///< of the series of new charts

 private:
  void makeApplication();
  [[nodiscard]] sheet::ObjectRef worksheetObject(const std::shared_ptr<FakeWorksheet>& sheet);
  [[nodiscard]] sheet::ObjectRef rangeNamed(const std::string& reference, const std::shared_ptr<FakeWorksheet>& sheet);
  [[nodiscard]] sheet::ObjectRef shapeObject(const std::shared_ptr<FakeWorksheet>& sheet,
                                             const std::shared_ptr<FakeShape>& shape);
  [[nodiscard]] sheet::ObjectRef newChart();
  [[nodiscard]] std::shared_ptr<FakeWorksheet> find(const std::string& name) const;

  friend class FakeRange;
  std::shared_ptr<FakeObject> application_;
  int chartsMade_ = 0;
};

}  // namespace mervane::tests
