#pragma once

#include <cstdint>
#include <string_view>

namespace mervane::calc {

/// The object model's code of an error that a cell shows, by the office's own number for it.
[[nodiscard]] std::int32_t errorCodeOf(std::int32_t officeError) noexcept;
/// What a formula writes for an error, such as "=#N/A".
[[nodiscard]] std::string_view errorFormula(std::int32_t code) noexcept;

}  // namespace mervane::calc
