#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "mervane/runtime_errors.h"

namespace mervane {

/// First and last index of one dimension, both inclusive. An upper bound one below the lower one is
/// a dimension without elements.
struct Bounds {
  std::int32_t lower = 0;
  std::int32_t upper = -1;
  /// Number of elements; 64 bits wide because the whole 32-bit index range is allowed.
  [[nodiscard]] std::int64_t count() const noexcept { return std::int64_t{upper} - lower + 1; }
  friend bool operator==(const Bounds&, const Bounds&) = default;
};

/// An automation array: any number of dimensions, each with bounds of its own.
///
/// A default-constructed array has no dimensions; asking its bounds or elements raises
/// "Subscript out of range" as the automation run time does. Elements lie in row-major order: the last
/// index runs fastest, so one row of a two-dimensional array is contiguous.
template <class T>
class Array {
  static_assert(!std::is_same_v<T, bool>, "elements lie one beside the other, each with an address");

 public:
  using Element = T;

  Array() = default;
  /// All elements are value-initialised. Raises invalidProcedureCall for a bound pair with upper < lower - 1
  /// and outOfMemory where the memory does not suffice for them.
  explicit Array(std::vector<Bounds> bounds) : bounds_(std::move(bounds)), elements_(allocated(bounds_)) {}
  /// Takes the elements over, in row-major order. Raises invalidProcedureCall where there are not exactly as many as
  /// the bounds say.
  explicit Array(std::vector<Bounds> bounds, std::vector<T> elements)
      : bounds_(std::move(bounds)), elements_(std::move(elements)) {
    if (elements_.size() != elementCount(bounds_)) raise(runtime::invalidProcedureCall);
  }

  [[nodiscard]] std::int32_t dimensions() const noexcept { return static_cast<std::int32_t>(bounds_.size()); }
  /// @param dimension counted from 1, as automation counts them. Raises subscriptOutOfRange otherwise.
  [[nodiscard]] std::int32_t lowerBound(std::int32_t dimension) const { return boundsOf(dimension).lower; }
  [[nodiscard]] std::int32_t upperBound(std::int32_t dimension) const { return boundsOf(dimension).upper; }
  [[nodiscard]] const std::vector<Bounds>& bounds() const& noexcept { return bounds_; }
  [[nodiscard]] std::vector<Bounds> bounds() && { return bounds_; }

  /// Checked access; raises subscriptOutOfRange for a wrong index or a wrong number of indexes.
  [[nodiscard]] decltype(auto) at(std::int32_t index) { return elements_[offset(index)]; }
  [[nodiscard]] decltype(auto) at(std::int32_t index) const { return elements_[offset(index)]; }
  [[nodiscard]] decltype(auto) at(std::int32_t row, std::int32_t column) { return elements_[offset(row, column)]; }
  [[nodiscard]] decltype(auto) at(std::int32_t row, std::int32_t column) const {
    return elements_[offset(row, column)];
  }

  /// All elements in row-major order. Their values can be changed, their number only together with the bounds.
  [[nodiscard]] std::span<T> elements() & noexcept { return elements_; }
  [[nodiscard]] std::span<const T> elements() const& noexcept { return elements_; }
  /// The elements of a temporary, which outlive it; an array that is moved from so has no dimensions any more.
  [[nodiscard]] std::vector<T> elements() && noexcept {
    bounds_.clear();
    return std::move(elements_);
  }

 private:
  [[nodiscard]] const Bounds& boundsOf(std::int32_t dimension) const {
    if (dimension < 1 || dimension > dimensions()) raise(runtime::subscriptOutOfRange);
    return bounds_[static_cast<std::size_t>(dimension - 1)];
  }

  [[nodiscard]] static std::size_t position(const Bounds& bounds, std::int32_t index) {
    if (index < bounds.lower || index > bounds.upper) raise(runtime::subscriptOutOfRange);
    return static_cast<std::size_t>(std::int64_t{index} - bounds.lower);
  }

  [[nodiscard]] std::size_t offset(std::int32_t index) const {
    if (dimensions() != 1) raise(runtime::subscriptOutOfRange);
    return position(bounds_[0], index);
  }

  [[nodiscard]] std::size_t offset(std::int32_t row, std::int32_t column) const {
    if (dimensions() != 2) raise(runtime::subscriptOutOfRange);
    return position(bounds_[0], row) * static_cast<std::size_t>(bounds_[1].count()) + position(bounds_[1], column);
  }

  [[nodiscard]] static std::size_t elementCount(const std::vector<Bounds>& bounds) {
    // No more than the machine can count in bytes: a 32-bit one would take the rest of the number for all of it.
    constexpr std::int64_t addressable = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(T);
    constexpr std::int64_t limit = std::min(std::int64_t{1} << 40, addressable);
    if (bounds.empty()) return 0;
    std::int64_t count = 1;
    for (const Bounds& one : bounds) {
      if (one.count() < 0) raise(runtime::invalidProcedureCall);
      if (one.count() != 0 && count > limit / one.count()) raise(runtime::outOfMemory);
      count *= one.count();
    }
    return static_cast<std::size_t>(count);
  }

  [[nodiscard]] static std::vector<T> allocated(const std::vector<Bounds>& bounds) {
    const std::size_t count = elementCount(bounds);
    try {
      return std::vector<T>(count);
    } catch (const std::bad_alloc&) {
      raise(runtime::outOfMemory);
    }
  }

  std::vector<Bounds> bounds_;
  std::vector<T> elements_;
};

}  // namespace mervane
