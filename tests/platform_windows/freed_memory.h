#pragma once

namespace mervane::tests {

/// Keeps the memory that its thread frees while it lives, and knows whether somebody has written there since. One at a
/// time.
class FreedMemory {
 public:
  FreedMemory();
  ~FreedMemory();
  FreedMemory(const FreedMemory&) = delete;
  FreedMemory& operator=(const FreedMemory&) = delete;

  [[nodiscard]] bool isUntouched() const;
};

}  // namespace mervane::tests
