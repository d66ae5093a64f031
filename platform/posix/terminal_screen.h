#pragma once

#include <cstdint>

#include "platform/screen.h"

namespace mervane::posix {

/// A terminal has no pointer; its bell is the beep.
class TerminalScreen final : public platform::Screen {
 public:
  /// @param descriptor where the bell is rung, if that is a terminal
  explicit TerminalScreen(int descriptor) : descriptor_(descriptor) {}
  void pointer(std::int32_t /*shape*/) override {}
  void beep() override;

 private:
  int descriptor_;
};

}  // namespace mervane::posix
