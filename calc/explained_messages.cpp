#include "calc/explained_messages.h"

#include <utility>

#include "mervane/failure.h"

namespace mervane::addin {

namespace {

class ExplainedMessages final : public platform::MessageBox {
 public:
  ExplainedMessages(std::shared_ptr<platform::MessageBox> messages, Explanation explanation)
      : messages_(std::move(messages)), explanation_(std::move(explanation)) {}

  Answer show(const std::string& text, Buttons buttons) override {
    if (buttons != Buttons::ok) return messages_->show(text, buttons);
    const std::string more = explanationOf(text);
    return messages_->show(more.empty() ? text : text + "\n" + more, buttons);
  }

 private:
  [[nodiscard]] std::string explanationOf(const std::string& text) const {
    try {
      return explanation_(text);
    } catch (const Failure&) {
      return {};  // The message itself is told all the same.
    }
  }

  std::shared_ptr<platform::MessageBox> messages_;
  Explanation explanation_;
};

}  // namespace

std::shared_ptr<platform::MessageBox> explainedMessages(std::shared_ptr<platform::MessageBox> messages,
                                                        Explanation explanation) {
  return std::make_shared<ExplainedMessages>(std::move(messages), std::move(explanation));
}

}  // namespace mervane::addin
