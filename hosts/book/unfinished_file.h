#pragma once

#include <filesystem>
#include <functional>

namespace mervane::hosts {

/// Is told of the file beside a target that takes the target's place when it is whole: its path just before it is made,
/// and an empty path once it is gone or has become the target. Whoever ends the program meanwhile can remove it.
using UnfinishedFile = std::function<void(const std::filesystem::path&)>;

}  // namespace mervane::hosts
