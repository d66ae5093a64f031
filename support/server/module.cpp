#include "support/server/module.h"

#include <atomic>

namespace mervane::server {
namespace {

// Apartments share the library, so this one count is shared between threads.
std::atomic<long> alive{0};
HINSTANCE handle = nullptr;

}  // namespace

ModuleLock::ModuleLock() {
  ++alive;
}
ModuleLock::~ModuleLock() {
  --alive;
}

void ModuleLock::lock(bool on) {
  if (on) {
    ++alive;
  } else {
    --alive;
  }
}

bool ModuleLock::anyAlive() {
  return alive != 0;
}

HINSTANCE moduleHandle() {
  return handle;
}

}  // namespace mervane::server

// Loading runs nothing of the system; the handle is kept for the resources and the path.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) mervane::server::handle = instance;
  return TRUE;
}
