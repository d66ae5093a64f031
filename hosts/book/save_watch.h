#pragma once

#include <filesystem>
#include <functional>

namespace mervane::hosts {

/// What whoever saves a file wants to be told meanwhile. Either may be left out.
struct SaveWatch {
  /// Is told of the file beside the target that takes the target's place when it is whole: its path just before it is
  /// made, and an empty path once it is gone or has become the target. Whoever ends the program meanwhile can remove
  /// it.
  std::function<void(const std::filesystem::path&)> unfinished{};
  /// Is called when that file is whole, just before it takes the target's place. What it raises stops the saving: the
  /// target stays as it is.
  std::function<void()> beforeReplacing{};
};

}  // namespace mervane::hosts
