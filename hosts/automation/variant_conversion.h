#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include <optional>

#include "mervane/array.h"
#include "mervane/variant.h"

/// Values between the system and the platform. Values passed by reference are read through; arrays keep every
/// dimension's bounds.
namespace mervane::automation {

/// Whatever a client hands over is taken or refused: values that refer to themselves, and arrays that hold something
/// else than is said or nothing at all, raise typeMismatch or subscriptOutOfRange. Currency, decimal and unsigned or
/// 64-bit integers become a double where 32 bits do not hold them; objects become AutomationObjects. Raises
/// typeMismatch for kinds that have no counterpart.
[[nodiscard]] Variant fromAutomation(const VARIANT& value);
/// A value with what it refers to in the place of the reference; it owns nothing and lives as long as that. Nothing
/// where the reference leads nowhere, or back to itself.
[[nodiscard]] std::optional<VARIANT> seenThrough(const VARIANT& value) noexcept;
/// Fills a cleared record that the caller clears; raises typeMismatch for an object that is not the platform's.
void toAutomation(const Variant& value, VARIANT& result);

/// A new array that the caller destroys; the platform's keeps columns together, ours rows.
[[nodiscard]] SAFEARRAY* toSafeArray(const AnyArray& array);
[[nodiscard]] SAFEARRAY* toSafeArray(const Array<std::int32_t>& array);

/// A record that clears itself.
class OwnedVariant {
 public:
  OwnedVariant() { VariantInit(&value_); }
  ~OwnedVariant() { VariantClear(&value_); }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
  [[nodiscard]] VARIANT* get() noexcept { return &value_; }
  [[nodiscard]] const VARIANT& value() const noexcept { return value_; }

 private:
  VARIANT value_{};
};

}  // namespace mervane::automation
