#include "platform/posix/terminal_message_box.h"

#include <istream>
#include <ostream>

namespace mervane::posix {

platform::MessageBox::Answer TerminalMessageBox::show(const std::string& text, Buttons buttons) {
  screen_ << text << '\n';
  const Answer closed = buttons == Buttons::ok ? Answer::ok : Answer::ignore;
  if (buttons == Buttons::ok || answers_ == nullptr) {
    screen_.flush();
    return closed;
  }
  for (std::string line;;) {
    screen_ << "[A]bort, [R]etry, [I]gnore? " << std::flush;
    if (!std::getline(*answers_, line)) return closed;
    switch (line.empty() ? '\0' : line.front()) {
      case 'a':
      case 'A':
        return Answer::abort;
      case 'r':
      case 'R':
        return Answer::retry;
      case 'i':
      case 'I':
        return Answer::ignore;
      default:
        break;
    }
  }
}

}  // namespace mervane::posix
