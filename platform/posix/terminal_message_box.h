#pragma once

#include <iosfwd>
#include <string>

#include "platform/message_box.h"

namespace mervane::posix {

/// Asks on a terminal, by letters. The end of the input counts as closing the box.
class TerminalMessageBox final : public platform::MessageBox {
 public:
  /// @param answers null where nobody can answer; the text is shown all the same
  TerminalMessageBox(std::istream* answers, std::ostream& screen) : answers_(answers), screen_(screen) {}
  Answer show(const std::string& text, Buttons buttons) override;

 private:
  std::istream* answers_;
  std::ostream& screen_;
};

}  // namespace mervane::posix
