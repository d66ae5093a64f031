#include "guard/plan.h"

namespace mervane::guard {

std::int32_t listingColumns(const Plan& plan) {
  return plan.oneColumn ? 1 : plan.clusters;
}

CellArea listing(const Plan& plan) {
  return {plan.outputs.row, plan.outputs.column, plan.outputs.row + plan.inputs.rows() - 1,
          plan.outputs.column + listingColumns(plan) - 1};
}

CellArea listingWithHeading(const Plan& plan) {
  CellArea area = listing(plan);
  if (area.firstRow > 1) --area.firstRow;
  return area;
}

std::vector<CellArea> statistics(const Plan& plan) {
  std::vector<CellArea> areas;
  const std::int32_t labels = plan.inputs.lastColumn + 1;
  const std::int32_t first = plan.inputs.lastRow + 1;
  const std::int32_t wide =
      plan.clusters * (int{plan.averages} + int{plan.weightedAverages} + int{plan.minimums} + int{plan.maximums});
  if (wide > 0) areas.push_back({first, plan.inputs.firstColumn, first + wide - 1, labels});
  if (plan.weights) {
    areas.push_back({first + wide, plan.inputs.lastColumn, first + wide + plan.clusters - 1, labels});
  }
  return areas;
}

CellArea scratchColumn(const Plan& plan) {
  const std::int32_t column = plan.inputs.lastColumn + 1;
  return {plan.inputs.firstRow, column, plan.inputs.lastRow, column};
}

CellArea sortedRows(const Plan& plan) {
  return {plan.inputs.firstRow, 1, plan.inputs.lastRow, plan.inputs.lastColumn + 1};
}

bool drawsCharts(const Plan& plan) {
  return plan.charts && (plan.weightedAverages || plan.weights);
}

}  // namespace mervane::guard
