#include "hosts/charts/model.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace mervane::charts {

std::int32_t Series::pointCount() const {
  if (values.area) return std::max(values.area->area.rows(), values.area->area.columns());
  return literalValue ? 1 : 0;
}

const char* displayUnitName(std::int32_t unit) {
  constexpr std::array<const char*, 9> names = {"hundreds",         "thousands", "tenThousands",
                                                "hundredThousands", "millions",  "tenMillions",
                                                "hundredMillions",  "billions",  "trillions"};
  return names.at(static_cast<std::size_t>(number::hundreds - unit));
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
