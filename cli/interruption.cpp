#include "cli/interruption.h"

#include <atomic>

namespace mervane::cli::interruption {
namespace {

// Handlers of signals, and the threads that a system calls a handler on, read and write these; all are lock-free.
std::atomic<bool> learning{false};
std::atomic<bool> asking{false};
std::atomic<int> interruptions{0};

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

}  // namespace

void beginLearning() {
  interruptions.store(0);
  learning.store(true);
}

bool note() noexcept {
  return interruptions.fetch_add(1) == 0 && learning.load() && !asking.load();
}

Question::Question() noexcept {
  asking.store(true);
}
Question::~Question() {
  asking.store(false);
}

bool requested() noexcept {
  return interruptions.load() > 0;
}

}  // namespace mervane::cli::interruption
