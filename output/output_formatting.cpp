#include "output/output_formatting.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "mervane/convert.h"
#include "output/cluster_texts.h"
#include "output/procedure_keys.h"
#include "support/globals.h"
#include "support/procedures.h"
#include "tools/m_tools.h"

namespace mervane {

namespace key = output::key;

void COutputFormatting::InputRange(const std::string& reference) {
  inputRange_ = application_.Range(reference);
}

void COutputFormatting::CalculateClusterWeight(const Variant& on) {
  calculateClusterWeight_ = toBoolean(on, globals::platform().locale);
}

void COutputFormatting::result(const Variant& numbers) {
  const AnyArray& source = numbers.array();
  if (source.dimensions() != 1) raise(runtime::typeMismatch);
  const Bounds bounds = source.bounds().front();
  Array<std::int32_t> copy({bounds});
  for (std::int64_t i = bounds.lower; i <= bounds.upper; ++i) {
    const auto index = static_cast<std::int32_t>(i);
    copy.at(index) = toInt32(source.at(index), globals::platform().locale);
  }
  result_ = std::move(copy);
}

void COutputFormatting::TotalRange(const std::string& reference) {
  traced(key::TotalRange, [&](Steps& step) {
    sheet::Range data;
    // 1. The data block.
    step([&] { data = application_.Range(mTools::ReferenceToA1(application_, reference)); });
    // 2. The same shifted down by its own height and right by one.
    sheet::Range below;
    step([&] { below = data.Offset(data.Rows().Count(), 1); });
    // 3. NB: column 0 of that lies under the first column of the data.
    sheet::Range corner;
    step([&] { corner = below.Cells(1, 0); });
    // 4. One row, and one column more than the data, for the labels.
    step([&] { printCursor_ = corner.Resize(1, data.Columns().Count() + 1); });
  });
}

void COutputFormatting::PrintData() {
  traced(key::PrintData, [&](Steps& step) {
    // 1. Whatever DrawCharts says.
    step([&] { DeleteOldCharts(); });
    // 2. to 10. A piece that fails is repeated whole or left out; the cursor moves only where a block is done.
    if (sortData_) step([&] { SortInputRange(); });
    step([&] { PrintClusters(); });
    if (calculateAverages_) step([&] { PrintAverages(); });
    if (calculateWeightedAverages_) step([&] { PrintWeightedAverage(); });
    if (calculateMinimums_) step([&] { PrintMinimums(); });
    if (calculateMaximums_) step([&] { PrintMaximums(); });
    if (calculateClusterWeight_) step([&] { PrintClusterWeight(); });
    if (setColors_) step([&] { ColorInputRows(); });
    if (drawCharts_) step([&] { AdjustChartsLocation(); });
  });
}

std::int32_t COutputFormatting::ClusterColorIndex(std::int32_t cluster) {
  constexpr auto count = static_cast<std::int32_t>(output::clusterColors.size());
  // A remainder keeps the sign of the cluster; the table has no place for a negative one.
  const std::int32_t position = cluster % count;
  if (position < 0) raise(runtime::subscriptOutOfRange);
  return output::clusterColors[static_cast<std::size_t>(position)];
}

sheet::Range COutputFormatting::outputRange() const {
  return application_.Range(mTools::ReferenceToA1(application_, outputCells_));
}

}  // namespace mervane
