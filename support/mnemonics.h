#pragma once

#include <string>
#include <vector>

namespace mervane {

/// Puts a mark before one letter of each caption so that Alt with that letter reaches its control. No letter is given
/// twice; the first letter of a word is preferred, and earlier captions choose first. A caption whose letters are all
/// taken stays as it is.
/// @param mark what the windows of a platform know a mnemonic by.
[[nodiscard]] std::vector<std::string> withMnemonics(const std::vector<std::string>& captions, char mark);

}  // namespace mervane
