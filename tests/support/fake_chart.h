#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_object.h"

namespace mervane::tests {

/// One series of a chart of the in-memory host.
struct FakeSeries : FakeObject {
  /// @param points how many values it has.
  FakeSeries(std::int32_t number, std::int32_t points);
  std::vector<std::shared_ptr<FakeObject>> points;
};

/// A chart of the in-memory host, on a sheet of its own at first. Its parts keep whatever is assigned to them; parts
/// that it lacks raise.
class FakeChart : public FakeObject, public std::enable_shared_from_this<FakeChart> {
 public:
  explicit FakeChart(std::string name);

  /// A reference to the chart as it stands now; a later move leaves it dead.
  [[nodiscard]] sheet::ObjectRef handle();
  void setTitle(const std::optional<std::string>& text);
  /// Empty where the chart has none.
  [[nodiscard]] std::string title() const;
  void addSeries(std::int32_t points);

  std::vector<std::shared_ptr<FakeSeries>> series;
  std::shared_ptr<FakeObject> categoryAxis;
  std::shared_ptr<FakeObject> valueAxis;
  std::string sheetName;  ///< where it is embedded; empty on a sheet of its own
  std::string source;     ///< address of the data and how they are plotted, "B9:D10 by 1"
  bool formulasAreEmpty = false;
  int moves = 0;
  /// The frame of an embedded chart, in points.
  double left = 0, top = 0, width = 360, height = 216;

 private:
  Variant seriesCollection(std::span<const Variant> arguments);
  void hasPart(sheet::member::Id flag, sheet::member::Id part, bool on);
};

}  // namespace mervane::tests
