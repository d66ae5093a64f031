#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/error_window.h"
#include "platform/services.h"
#include "tests/support/call_script.h"

namespace mervane::tests {

/// What a test prepares for the failure dialog and what it showed. Without a prepared answer the dialog is answered by
/// Abort, so that no test can run in circles by a retry that it did not ask for.
struct ErrorDialogScript {
  explicit ErrorDialogScript(std::shared_ptr<Journal> journal = nullptr) : script(std::move(journal)) {}

  /// Keys of the items to click, one for each showing to come; the empty one stands for the close box.
  std::deque<std::string> answers;
  /// Called while the dialog is up, before it is answered, with the number of the showing from 1.
  std::function<void(int)> whileShown;
  std::vector<std::string> reports;  ///< one for each showing
  std::vector<bool> offeredMail;     ///< whether the showing had the item "MAIL"
  int windows = 0;                   ///< how many windows were made
  CallScript script;
};

/// A failure dialog that is answered at once, as its script says.
class ScriptedErrorWindow : public platform::ErrorWindow {
 public:
  explicit ScriptedErrorWindow(std::shared_ptr<ErrorDialogScript> script) : script_(std::move(script)) {
    ++script_->windows;
  }

  void load(const std::string&, const platform::OptionItems&, const platform::OptionItems& buttons,
            platform::ErrorWindowEvents& events) override {
    buttons_ = &buttons;
    events_ = &events;
  }
  void itemsChanged() override {}
  void setMessage(const std::string& text) override { message_ = text; }
  void show() override {
    script_->script.enter("errorWindow.show");
    events_->activated();
    events_->resized();
    script_->reports.push_back(message_);
    script_->offeredMail.push_back(buttons_->Contains("MAIL"));
    if (script_->whileShown) script_->whileShown(static_cast<int>(script_->reports.size()));
    std::string key = "ABORT";
    if (!script_->answers.empty()) {
      key = script_->answers.front();
      script_->answers.pop_front();
    }
    if (key.empty()) {
      events_->closed();
    } else {
      events_->clicked(key);
    }
  }
  void hide() override {}
  float barWidth() const override { return 4980.0F; }

 private:
  std::shared_ptr<ErrorDialogScript> script_;
  const platform::OptionItems* buttons_ = nullptr;
  platform::ErrorWindowEvents* events_ = nullptr;
  std::string message_;
};

/// Lets the failure dialogs of these services follow the script.
inline void installErrorDialog(platform::Services& services, std::shared_ptr<ErrorDialogScript> script) {
  services.createErrorWindow = [script = std::move(script)] { return std::make_unique<ScriptedErrorWindow>(script); };
}

}  // namespace mervane::tests
