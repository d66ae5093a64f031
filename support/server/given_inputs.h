#pragma once

#include <windows.h>
// The component model's header needs the platform's first.
#include <oleauto.h>

#include <memory>

#include "mervane/variant.h"

namespace mervane::server {

/// The array that a client set as Inputs, as it came. The system keeps dates, currencies, booleans, wide integers and
/// objects as elements of any type; a client gets back the type that it gave.
class GivenInputs {
 public:
  /// @param given value that holds an array, no reference. @param taken what the system made of it.
  void remember(const VARIANT& given, const Variant& taken);
  /// Fills a cleared record with a copy of the array where the present value of Inputs is still what was made of it.
  /// False where it is not, or where the system keeps the type itself.
  [[nodiscard]] bool giveBack(const Variant& present, VARIANT& value) const;

 private:
  struct Destroy {
    void operator()(SAFEARRAY* array) const noexcept { SafeArrayDestroy(array); }
  };

  Variant taken_;
  VARTYPE type_ = VT_EMPTY;
  std::unique_ptr<SAFEARRAY, Destroy> array_;
};

}  // namespace mervane::server
