#include "hosts/charts/model.h"

#include <algorithm>

namespace mervane::charts {

std::int32_t Series::pointCount() const {
  if (values.area) return std::max(values.area->area.rows(), values.area->area.columns());
  return literalValue ? 1 : 0;
}

Chart::Chart() {
  category.type = number::categoryAxis;
  value.type = number::valueAxis;
  value.hasMajorGridlines = true;
}

bool Chart::isLine() const noexcept {
  return type == number::lineChart || type == number::lineMarkersChart;
}

}  // namespace mervane::charts
