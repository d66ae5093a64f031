#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/message_box.h"

namespace mervane::addin {

/// What else there is to say about a message of the component's; empty for nothing. It may raise a Failure.
using Explanation = std::function<std::string(const std::string& message)>;

/// A message box whose messages have a second line, where there is something to say in it. Questions have none.
[[nodiscard]] std::shared_ptr<platform::MessageBox> explainedMessages(std::shared_ptr<platform::MessageBox> messages,
                                                                      Explanation explanation);

}  // namespace mervane::addin
