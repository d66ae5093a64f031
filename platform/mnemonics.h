#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/option_item.h"

/// The letters that reach the controls of a window, for the windows of every machine.
namespace mervane::platform {

/// Puts a mark before one letter of each caption so that Alt with that letter reaches its control. The first letter of
/// a word is preferred, and earlier captions choose first. A caption whose letters are all taken shares the one that
/// fewest others have, the first of equals; the windows of every machine go from one to the next by it. A caption
/// without letters, or with none that may be shared, stays as it is.
/// @param mark what the windows of a machine know a mnemonic by.
/// @param alone so many captions from the first on share their letters with none
[[nodiscard]] std::vector<std::string> withMnemonics(const std::vector<std::string>& captions, char mark,
                                                     std::size_t alone = 0);

/// One caption for each item.
struct MarkedCaptions {
  std::vector<std::string> buttons;
  std::vector<std::string> ownButtons;
  std::vector<std::string> options;
};

/// The captions of one window with their mnemonics. The buttons choose their letters first and share them with none; a
/// label has no letter and no caption here.
/// @param ownButtons captions of further buttons, which belong to the window itself
[[nodiscard]] MarkedCaptions markedCaptions(const OptionItems& buttons, const OptionItems& options, char mark,
                                            const std::vector<std::string>& ownButtons = {});

}  // namespace mervane::platform
