#include "bench/training_kernel.h"

#include <algorithm>
#include <array>

#include "component/scale_value.h"

namespace mervane::bench {

std::vector<double> scaledColumns(std::vector<double> values, std::size_t columns) {
  for (std::size_t j = 0; j < columns; ++j) {
    double least = values[j];
    double most = values[j];
    for (std::size_t i = j; i < values.size(); i += columns) {
      least = std::min(least, values[i]);
      most = std::max(most, values[i]);
    }
    for (std::size_t i = j; i < values.size(); i += columns)
      values[i] = scaleValue(values[i], least, most, scaledMinimum, scaledMaximum);
  }
  return values;
}

engine::LearningRule trainAlone(const Schedule& schedule, std::int32_t columnCount, std::int32_t clusters,
                                std::span<const double> samples, const engine::Kernel& kernel) {
  engine::LearningRule rule(clusters, columnCount, 1.0, kernel);
  for (std::int32_t unit = 0; unit < clusters; ++unit)
    for (std::int32_t input = 0; input < columnCount; ++input) rule.setWeight(unit, input, rule.convexCentre());
  rule.startLearning();
  const auto rows = static_cast<std::size_t>(schedule.rows);
  const auto columns = static_cast<std::size_t>(columnCount);
  constexpr std::size_t together = 512;
  std::array<double, together> factors;
  for (std::int32_t epoch = 1; epoch <= schedule.epochs; ++epoch) {
    rule.setRate(schedule.rate(epoch));
    rule.setRadius(schedule.radius(epoch));
    for (std::size_t first = 0; first < rows; first += together) {
      const std::size_t count = std::min(together, rows - first);
      for (std::size_t i = 0; i < count; ++i)
        factors[i] = std::min(schedule.convexFactor(epoch, static_cast<std::int32_t>(first + i)), 1.0);
      rule.learn(samples.subspan(first * columns, count * columns), count,
                 std::span(factors).first(factors[0] < 1.0 ? count : 0));
    }
  }
  rule.finish();
  return rule;
}

}  // namespace mervane::bench
