#pragma once

#include <functional>

#include "calc/office.h"

namespace mervane::addin {

/// Runs work on the office's main thread: at once where that is the calling one, else when it is free. What the work
/// raises does not come back.
void callOnMainThread(const uno::Reference<uno::XComponentContext>& context, std::function<void()> work);

}  // namespace mervane::addin
