#pragma once

#include <windows.h>

/// What keeps the library loaded, and where it is.
namespace mervane::server {

/// Counts a living object or a lock on the factory while it lives itself.
class ModuleLock {
 public:
  ModuleLock();
  ~ModuleLock();
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;

  static void lock(bool on);
  [[nodiscard]] static bool anyAlive();
};

[[nodiscard]] HINSTANCE moduleHandle();

}  // namespace mervane::server
