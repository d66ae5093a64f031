#pragma once

#include <memory>

#include "platform/key_store.h"

namespace mervane::dialog {

/// A store that reads from another one and refuses every change: for runs that start from what the dialog remembers and
/// leave that alone.
[[nodiscard]] std::shared_ptr<platform::KeyStore> storeToReadFrom(std::shared_ptr<platform::KeyStore> store);

}  // namespace mervane::dialog
