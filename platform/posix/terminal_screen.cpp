#include "platform/posix/terminal_screen.h"

#include <unistd.h>

namespace mervane::posix {

void TerminalScreen::beep() {
  if (isatty(descriptor_) == 0) return;
  [[maybe_unused]] const ssize_t rung = ::write(descriptor_, "\a", 1);
}

}  // namespace mervane::posix
