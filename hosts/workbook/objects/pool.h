#pragma once

#include <array>
#include <cstddef>
#include <new>
#include <vector>

namespace mervane::workbook {

/// Memory for the small objects that the object model hands out by the million.
///
/// OPTIMIZATION: a range object lives for one or two calls; its block goes into a list of this thread and the
/// next object takes it from there. The list keeps a bounded number of blocks and gives them back when the thread ends.
template <class T>
class PoolAllocator {
 public:
  using value_type = T;

  PoolAllocator() = default;
  template <class U>
  PoolAllocator(const PoolAllocator<U>&) noexcept {}  // NOLINT(google-explicit-constructor): allocators convert

  T* allocate(std::size_t count) {
    List& free = list();
    if (count == 1 && free.used > 0) return static_cast<T*>(free.blocks[--free.used]);
    return static_cast<T*>(::operator new (count * sizeof(T), std::align_val_t{alignof(T)}));
  }

  void deallocate(T* block, std::size_t count) noexcept {
    List& free = list();
    if (count == 1 && free.used < free.blocks.size()) {
      free.blocks[free.used++] = block;
      return;
    }
    ::operator delete (block, std::align_val_t{alignof(T)});
  }

  friend bool operator==(const PoolAllocator&, const PoolAllocator&) { return true; }

 private:
  struct List {
    std::array<void*, 64> blocks{};
    std::size_t used = 0;
    ~List() {
      while (used > 0) ::operator delete (blocks[--used], std::align_val_t{alignof(T)});
      used = blocks.size();  // objects that outlive the thread's list go past it
    }
  };
  static List& list() {
    thread_local List own;
    return own;
  }
};

}  // namespace mervane::workbook
