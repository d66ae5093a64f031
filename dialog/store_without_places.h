#pragma once

#include <memory>

#include "platform/key_store.h"

namespace mervane::dialog {

/// A store that hands everything on to another one, but keeps no place of the options window: for runs whose window
/// nobody sees, which else would leave that window's place to the next real one.
[[nodiscard]] std::shared_ptr<platform::KeyStore> storeWithoutPlaces(std::shared_ptr<platform::KeyStore> store);

}  // namespace mervane::dialog
