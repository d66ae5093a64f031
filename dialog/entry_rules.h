#pragma once

#include <cstdint>
#include <string>

#include "mervane/variant.h"
#include "support/validation.h"

/// What the numbers of the dialog may be, after an edit and after loading alike.
namespace mervane::dialog {

/// One checked item. Limits are open at both ends.
struct EntryRule {
  enum class Number { real, integer };

  const char* key;
  Number number;
  double minValue;
  double maxValue;
  /// What a bad stored value is replaced by.
  double mended;
};

/// In the order in which entries are compared and loaded values are checked.
inline constexpr EntryRule entryRules[] = {
    {"LEARNINGRATE", EntryRule::Number::real, 0.00001, 0.99999, 0.5},
    {"INITIALWEIGHTS", EntryRule::Number::real, 0.00001, 0.99999, 0.3},
    {"EPOCHS", EntryRule::Number::integer, 1, 99999, 100},
    {"STARTLEARNINGRADIUS", EntryRule::Number::integer, 1, 999, 3},
    {"CLUSTERS", EntryRule::Number::integer, 1, 999, 3},
};

[[nodiscard]] inline bool accepts(const EntryRule& rule, const CValidation& validation, const std::string& text) {
  if (rule.number == EntryRule::Number::real) return validation.ValidateDoubleRange(text, rule.minValue, rule.maxValue);
  return validation.ValidateLongRange(text, static_cast<std::int32_t>(rule.minValue),
                                      static_cast<std::int32_t>(rule.maxValue));
}

/// The number as the item holds it: a real, or a 32-bit integer.
[[nodiscard]] inline Variant mendedValue(const EntryRule& rule) {
  if (rule.number == EntryRule::Number::real) return rule.mended;
  return static_cast<std::int32_t>(rule.mended);
}

}  // namespace mervane::dialog
