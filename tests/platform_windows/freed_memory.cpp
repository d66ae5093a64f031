#include "tests/platform_windows/freed_memory.h"

#include <malloc.h>
#include <windows.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr unsigned char mark = 0xDD;
std::atomic<DWORD> watched{0};
std::array<void*, 4096> kept{};
std::size_t count = 0;

void release(void* memory) noexcept {
  if (memory == nullptr || watched.load() != GetCurrentThreadId() || count == kept.size()) {
    std::free(memory);
    return;
  }
  std::memset(memory, mark, _msize(memory));
  kept[count++] = memory;
}

}  // namespace

void* operator new(std::size_t size) {
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  release(memory);
}

namespace mervane::tests {

FreedMemory::FreedMemory() {
  count = 0;
  watched = GetCurrentThreadId();
}

FreedMemory::~FreedMemory() {
  watched = 0;
  while (count > 0) std::free(kept[--count]);
}

bool FreedMemory::isUntouched() const {
  for (std::size_t i = 0; i < count; ++i) {
    const auto* bytes = static_cast<const unsigned char*>(kept[i]);
    const std::size_t size = _msize(kept[i]);
    for (std::size_t at = 0; at < size; ++at) {
      if (bytes[at] != mark) return false;
    }
  }
  return true;
}

}  // namespace mervane::tests
