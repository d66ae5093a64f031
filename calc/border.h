#pragma once

#include <functional>

namespace mervane::addin {

/// Runs what the office has called for. No C++ exception of ours passes this border, whatever it is: the office's own
/// code below could not carry it. Trouble is written to the system log.
void atBorder(const std::function<void()>& work) noexcept;

}  // namespace mervane::addin
