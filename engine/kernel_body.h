#pragma once

// The loops of every vector kernel, written once over a `Lanes` type that names the vector operations of one
// processor. Everything here has internal linkage: each kernel file compiles its own copy with its own flags.

#include "engine/kernel.h"

namespace mervane::engine {
namespace {

/// The winner of one sample: its index and squared distance.
struct Winner {
  std::int32_t unit;
  double distance;
};

/// Squared distances of `Blocks` neighbouring blocks, all in registers.
template <class Lanes, std::size_t Blocks>
[[gnu::always_inline]] inline void distances(const double* block, std::int32_t inputs, const double* sample,
                                             typename Lanes::Vector (&sum)[Blocks]) {
  for (std::size_t b = 0; b < Blocks; ++b) sum[b] = Lanes::zero();
  const std::ptrdiff_t step = std::ptrdiff_t{inputs} * Lanes::count;
  for (std::int32_t j = 0; j < inputs; ++j) {
    const typename Lanes::Vector value = Lanes::spread(sample + j);
    for (std::size_t b = 0; b < Blocks; ++b) {
      const typename Lanes::Vector gap =
          Lanes::subtract(value, Lanes::load(block + static_cast<std::ptrdiff_t>(b) * step));
      sum[b] = Lanes::add(sum[b], Lanes::multiply(gap, gap));
    }
    block += Lanes::count;
  }
}

/// Search where all blocks fit into registers at once.
template <class Lanes, std::size_t Blocks>
[[gnu::always_inline]] inline Winner searchFew(const LaneWeights& weights, const double* sample) {
  typename Lanes::Vector sum[Blocks];
  distances<Lanes, Blocks>(weights.values, weights.inputs, sample, sum);
  typename Lanes::Vector least = sum[0];
  for (std::size_t b = 1; b < Blocks; ++b) least = Lanes::minimum(least, sum[b]);
  const typename Lanes::Vector best = Lanes::minimumOfAll(least);
  std::uint32_t equal = 0;
  for (std::size_t b = 0; b < Blocks; ++b)
    equal |= Lanes::equal(sum[b], best) << (b * static_cast<std::size_t>(Lanes::count));
  return {__builtin_ctz(equal), Lanes::first(best)};
}

/// Search over any number of blocks; the distances pass through `scratch`.
template <class Lanes>
[[gnu::noinline]] Winner searchMany(const LaneWeights& weights, const double* sample, double* scratch) {
  constexpr auto together = static_cast<std::int32_t>(Lanes::together);
  const std::ptrdiff_t step = std::ptrdiff_t{weights.inputs} * Lanes::count;
  typename Lanes::Vector least{};
  std::int32_t b = 0;
  for (; b + together <= weights.blocks; b += together) {
    typename Lanes::Vector sum[Lanes::together];
    distances<Lanes, Lanes::together>(weights.values + b * step, weights.inputs, sample, sum);
    if (b == 0) least = sum[0];
    for (std::size_t i = 0; i < Lanes::together; ++i) {
      least = Lanes::minimum(least, sum[i]);
      Lanes::store(scratch + (b + static_cast<std::ptrdiff_t>(i)) * Lanes::count, sum[i]);
    }
  }
  for (; b < weights.blocks; ++b) {
    typename Lanes::Vector sum[1];
    distances<Lanes, 1>(weights.values + b * step, weights.inputs, sample, sum);
    least = b == 0 ? sum[0] : Lanes::minimum(least, sum[0]);
    Lanes::store(scratch + std::ptrdiff_t{b} * Lanes::count, sum[0]);
  }
  const typename Lanes::Vector best = Lanes::minimumOfAll(least);
  std::int32_t unit = 0;
  std::uint32_t equal = 0;
  while ((equal = Lanes::equal(Lanes::load(scratch + unit), best)) == 0) unit += Lanes::count;
  return {unit + __builtin_ctz(equal), Lanes::first(best)};
}

/// `Blocks` 0 stands for any number of blocks.
template <class Lanes, std::size_t Blocks>
[[gnu::always_inline]] inline Winner searchOne(const LaneWeights& weights, const double* sample, double* scratch) {
  if constexpr (Blocks == 0)
    return searchMany<Lanes>(weights, sample, scratch);
  else
    return searchFew<Lanes, Blocks>(weights, sample);
}

/// Writes F x + (1 - F) centre over the inputs of one sample.
[[gnu::always_inline]] inline void combine(const double* sample, std::int32_t inputs, double factor, double centre,
                                           double* __restrict result) {
  const double rest = (1.0 - factor) * centre;
  for (std::int32_t j = 0; j < inputs; ++j) result[j] = factor * sample[j] + rest;
}

[[gnu::always_inline]] inline void record(const Gathering& gathering, const Winner& winner, std::size_t position,
                                          const double* sample, std::int32_t inputs) {
  Tally& tally = gathering.tallies[winner.unit];
  tally.error += winner.distance;
  tally.hits += 1;
  const bool farther = winner.distance > tally.farthest;
  tally.farthest = farther ? winner.distance : tally.farthest;
  tally.farthestSample = farther ? static_cast<std::int64_t>(position) : tally.farthestSample;
  double* __restrict sum = gathering.sums + static_cast<std::size_t>(winner.unit) * gathering.stride;
  for (std::int32_t j = 0; j < inputs; ++j) sum[j] += sample[j];
}

/// Has memory fetched for the sample that comes one portion later. The address may lie behind the samples: it is never
/// read, so it is reckoned as a number.
[[gnu::always_inline]] inline void fetchAhead(const double* sample, std::int32_t inputs) {
  constexpr std::int32_t cacheLine = 64 / sizeof(double);
  const std::uintptr_t ahead = reinterpret_cast<std::uintptr_t>(sample) + portion * sizeof(double);
  for (std::int32_t j = 0; j < inputs; j += cacheLine) {
    const std::uintptr_t line = ahead + static_cast<std::uintptr_t>(j) * sizeof(double);
    __builtin_prefetch(reinterpret_cast<const void*>(line));  // NOLINT(performance-no-int-to-ptr): never read
  }
}

/// `Inputs` 0 stands for any number of inputs.
template <class Lanes, std::size_t Blocks, std::int32_t Inputs>
void gatherAll(const LaneWeights& given, const Samples& samples, const Gathering& gathering, double* scratch) {
  LaneWeights weights = given;
  if constexpr (Inputs != 0) weights.inputs = Inputs;
  double* combined = scratch;
  double* room = scratch + gathering.stride;
  const double* sample = samples.values;
  for (std::size_t i = 0; i < samples.count; ++i, sample += weights.inputs) {
    const double* shown = sample;
    fetchAhead(sample, weights.inputs);
    if (samples.factors != nullptr && samples.factors[i] != 1.0) {
      combine(sample, weights.inputs, samples.factors[i], samples.centre, combined);
      shown = combined;
    }
    record(gathering, searchOne<Lanes, Blocks>(weights, shown, room), i, shown, weights.inputs);
  }
}

template <class Lanes, std::size_t Blocks>
void gatherBlocks(const LaneWeights& weights, const Samples& samples, const Gathering& gathering, double* scratch) {
  switch (weights.inputs) {
    case 1:
      return gatherAll<Lanes, Blocks, 1>(weights, samples, gathering, scratch);
    case 2:
      return gatherAll<Lanes, Blocks, 2>(weights, samples, gathering, scratch);
    case 3:
      return gatherAll<Lanes, Blocks, 3>(weights, samples, gathering, scratch);
    case 4:
      return gatherAll<Lanes, Blocks, 4>(weights, samples, gathering, scratch);
    default:
      return gatherAll<Lanes, Blocks, 0>(weights, samples, gathering, scratch);
  }
}

template <class Lanes>
void gather(const LaneWeights& weights, const Samples& samples, const Gathering& gathering, double* scratch) {
  switch (weights.blocks) {
    case 1:
      return gatherBlocks<Lanes, 1>(weights, samples, gathering, scratch);
    case 2:
      return gatherBlocks<Lanes, 2>(weights, samples, gathering, scratch);
    case 3:
      return gatherBlocks<Lanes, 3>(weights, samples, gathering, scratch);
    case 4:
      return gatherBlocks<Lanes, 4>(weights, samples, gathering, scratch);
    default:
      return gatherAll<Lanes, 0, 0>(weights, samples, gathering, scratch);
  }
}

template <class Lanes>
void search(const LaneWeights& weights, const double* samples, std::size_t count, std::int32_t* winners,
            double* distance, double* scratch) {
  for (std::size_t i = 0; i < count; ++i, samples += weights.inputs) {
    const Winner winner = searchMany<Lanes>(weights, samples, scratch);
    winners[i] = winner.unit;
    *distance = winner.distance;
  }
}

template <class Lanes>
bool usable(const double* values, std::size_t count) {
  // Scaled by this, what is not below the limit becomes infinite, and infinity less itself is not a number.
  constexpr double overflowing = 0x1p784;
  constexpr auto lanes = static_cast<std::size_t>(Lanes::count);
  constexpr std::size_t together = 4;
  const typename Lanes::Vector scale = Lanes::spread(&overflowing);
  typename Lanes::Vector sum[together] = {Lanes::zero(), Lanes::zero(), Lanes::zero(), Lanes::zero()};
  std::size_t i = 0;
  for (; i + together * lanes <= count; i += together * lanes) {
    for (std::size_t k = 0; k < together; ++k) {
      const typename Lanes::Vector scaled = Lanes::multiply(Lanes::load(values + i + k * lanes), scale);
      sum[k] = Lanes::add(sum[k], Lanes::subtract(scaled, scaled));
    }
  }
  const typename Lanes::Vector all = Lanes::add(Lanes::add(sum[0], sum[1]), Lanes::add(sum[2], sum[3]));
  if (Lanes::equal(all, all) != (1U << lanes) - 1) return false;
  for (; i < count; ++i) {
    if (!(values[i] < valueLimit && values[i] > -valueLimit)) return false;
  }
  return true;
}

template <class Lanes>
FactorKinds takeFactors(const double* given, std::size_t count, double* effective) {
  constexpr double whole = 1.0;
  constexpr auto lanes = static_cast<std::size_t>(Lanes::count);
  constexpr std::uint32_t everyLane = (1U << lanes) - 1;
  const typename Lanes::Vector one = Lanes::spread(&whole);
  std::uint32_t numbers = everyLane;
  std::uint32_t ones = everyLane;
  std::size_t i = 0;
  for (; i + lanes <= count; i += lanes) {
    const typename Lanes::Vector factor = Lanes::load(given + i);
    const typename Lanes::Vector taken = Lanes::maximum(Lanes::minimum(factor, one), Lanes::zero());
    Lanes::store(effective + i, taken);
    numbers &= Lanes::equal(factor, factor);
    ones &= Lanes::equal(taken, one);
  }
  FactorKinds kinds{ones != everyLane, numbers != everyLane};
  for (; i < count; ++i) {
    const double atMostOne = given[i] < 1.0 ? given[i] : 1.0;
    effective[i] = atMostOne > 0.0 ? atMostOne : 0.0;
    kinds.contracting |= effective[i] < 1.0;
    kinds.notNumbers |= given[i] != given[i];
  }
  return kinds;
}

template <class Lanes>
constexpr Kernel kernelOf(const char* name) {
  return {name, Lanes::count, gather<Lanes>, search<Lanes>, usable<Lanes>, takeFactors<Lanes>};
}

}  // namespace
}  // namespace mervane::engine
