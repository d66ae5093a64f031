#pragma once

#include "analysis/samples.h"

namespace mervane::analysis {

/// How well the units of a map stand for the samples (Kohonen, Self-Organizing Maps, 3rd edition; Kiviluoto 1996 for
/// the topographic error).
struct MapErrors {
  /// Mean Euclidean distance from a sample to its nearest unit.
  double quantisation = 0.0;
  /// Share of the samples, from 0 to 1, whose nearest and second nearest unit are not neighbours in the order of
  /// the units. Of units at the same distance the one with the lower index counts as nearer. 0 with fewer than two
  /// units.
  double topographic = 0.0;
};

/// @param units the weight vectors in the order of the units, as many columns as the samples have. Units of a map on
/// a line: unit i has the neighbours i - 1 and i + 1.
[[nodiscard]] MapErrors mapErrors(const Samples& samples, const Samples& units);

}  // namespace mervane::analysis
