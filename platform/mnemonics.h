#pragma once

#include <string>
#include <vector>

#include "platform/option_item.h"

/// The letters that reach the controls of a window, for the windows of every machine.
namespace mervane::platform {

/// Puts a mark before one letter of each caption so that Alt with that letter reaches its control. No letter is given
/// twice; the first letter of a word is preferred, and earlier captions choose first. A caption whose letters are all
/// taken stays as it is.
/// @param mark what the windows of a machine know a mnemonic by.
[[nodiscard]] std::vector<std::string> withMnemonics(const std::vector<std::string>& captions, char mark);

/// One caption for each item.
struct MarkedCaptions {
  std::vector<std::string> buttons;
  std::vector<std::string> options;
};

/// The captions of one window with their mnemonics. The buttons choose their letters first; a label has no letter and
/// no caption here.
[[nodiscard]] MarkedCaptions markedCaptions(const OptionItems& buttons, const OptionItems& options, char mark);

}  // namespace mervane::platform
