#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "bench/schedule.h"
#include "engine/kernel.h"
#include "engine/learning_rule.h"

namespace mervane::bench {

/// The values of each column brought into the range that the network is trained in.
/// @param values row by row.
[[nodiscard]] std::vector<double> scaledColumns(std::vector<double> values, std::size_t columns);

/// The presentations of a whole training with the default parameters, and nothing else: the floor of any training.
/// @param samples scaled, row by row.
[[nodiscard]] engine::LearningRule trainAlone(const Schedule& schedule, std::int32_t columns, std::int32_t clusters,
                                              std::span<const double> samples, const engine::Kernel& kernel);

}  // namespace mervane::bench
