#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/message_box.h"
#include "tests/support/call_script.h"

namespace mervane::tests {

/// A message box that is answered at once. Without a prepared answer it takes OK or Abort, so that no test can run
/// in circles by a retry that it did not ask for.
class RecordingMessageBox : public platform::MessageBox {
 public:
  struct Shown {
    std::string text;
    Buttons buttons;
  };

  explicit RecordingMessageBox(std::shared_ptr<Journal> journal = nullptr) : script(std::move(journal)) {}

  Answer show(const std::string& text, Buttons buttons) override {
    script.enter("messageBox.show");
    shown.push_back({text, buttons});
    if (answers.empty()) return buttons == Buttons::ok ? Answer::ok : Answer::abort;
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::vector<Shown> shown;
  std::deque<Answer> answers;  ///< one for each showing to come
  CallScript script;
};

}  // namespace mervane::tests
