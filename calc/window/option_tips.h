#pragma once

#include <string>

namespace mervane::addin {

/// What an option is for and what it takes, without a full stop; empty for an item that says it all by its caption.
[[nodiscard]] std::string optionTip(const std::string& key);

}  // namespace mervane::addin
