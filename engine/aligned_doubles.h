#pragma once

#include <cstddef>
#include <new>
#include <vector>

namespace mervane::engine {

/// Allocates at the start of a cache line, so that no vector load of a whole block straddles two.
template <class T>
struct CacheLineAllocator {
  using value_type = T;
  static constexpr std::align_val_t alignment{64};

  CacheLineAllocator() = default;
  template <class U>
  explicit CacheLineAllocator(const CacheLineAllocator<U>&) noexcept {}

  [[nodiscard]] T* allocate(std::size_t count) { return static_cast<T*>(::operator new(count * sizeof(T), alignment)); }
  void deallocate(T* memory, std::size_t) noexcept { ::operator delete(memory, alignment); }

  friend bool operator==(const CacheLineAllocator&, const CacheLineAllocator&) noexcept { return true; }
};

using AlignedDoubles = std::vector<double, CacheLineAllocator<double>>;

}  // namespace mervane::engine
