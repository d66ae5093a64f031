#pragma once

#include <cstdint>
#include <string>

namespace mervane {

/// Whether a text that the user entered is a number, under the user's regional settings, and lies between limits.
/// Bounds are exclusive at both ends. Nothing here raises: a text that does not convert is answered by false.
class CValidation {
 public:
  [[nodiscard]] bool ValidateDouble(const std::string& strValue) const;
  [[nodiscard]] bool ValidateDoubleRange(const std::string& strValue, double minValue, double maxValue) const;
  /// Rounds to nearest, ties to even, before it looks at the 32 bits.
  [[nodiscard]] bool ValidateLong(const std::string& strValue) const;
  [[nodiscard]] bool ValidateLongRange(const std::string& strValue, std::int32_t minValue, std::int32_t maxValue) const;
};

}  // namespace mervane
