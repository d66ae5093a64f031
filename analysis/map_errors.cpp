#include "analysis/map_errors.h"

#include <cmath>
#include <cstddef>
#include <limits>

namespace mervane::analysis {
namespace {

struct TwoNearest {
  std::size_t first = 0;
  std::size_t second = 0;
  double firstDistance = std::numeric_limits<double>::infinity();
  double secondDistance = std::numeric_limits<double>::infinity();
};

TwoNearest twoNearest(std::span<const double> sample, const Samples& units) {
  TwoNearest nearest;
  for (std::size_t unit = 0; unit < units.rows(); ++unit) {
    const double distance = squaredDistance(sample, units.row(unit));
    if (distance < nearest.firstDistance) {
      nearest.second = nearest.first;
      nearest.secondDistance = nearest.firstDistance;
      nearest.first = unit;
      nearest.firstDistance = distance;
    } else if (distance < nearest.secondDistance) {
      nearest.second = unit;
      nearest.secondDistance = distance;
    }
  }
  return nearest;
}

bool areNeighbours(std::size_t left, std::size_t right) {
  return left + 1 == right || right + 1 == left;
}

}  // namespace

MapErrors mapErrors(const Samples& samples, const Samples& units) {
  MapErrors errors;
  const std::size_t rows = samples.rows();
  if (rows == 0 || units.rows() == 0) return errors;
  std::size_t apart = 0;
  for (std::size_t row = 0; row < rows; ++row) {
    const TwoNearest nearest = twoNearest(samples.row(row), units);
    errors.quantisation += std::sqrt(nearest.firstDistance);
    if (units.rows() > 1 && !areNeighbours(nearest.first, nearest.second)) ++apart;
  }
  errors.quantisation /= static_cast<double>(rows);
  errors.topographic = static_cast<double>(apart) / static_cast<double>(rows);
  return errors;
}

}  // namespace mervane::analysis
