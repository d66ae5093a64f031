#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include <cstddef>
#include <vector>

#include "mervane/array.h"

namespace mervane::automation {

/// Size of one value of a type outside of arrays and references; 0 for types that have no counterpart here.
[[nodiscard]] std::size_t sizeOfType(VARTYPE type) noexcept;

/// Direct sight of a client's array while it lives.
///
/// A client says twice what an array holds, in its value and in the array, and a careless one says two things. Nothing
/// is read before both agree: raises typeMismatch where they do not, subscriptOutOfRange where a bound does not fit 32
/// bits or the elements have been given back, outOfMemory where the array cannot be locked.
class SafeArrayView {
 public:
  /// @param claimed type of an element as the client's value tells it; VT_EMPTY asks the array alone.
  SafeArrayView(SAFEARRAY* array, VARTYPE claimed);
  ~SafeArrayView();
  SafeArrayView(const SafeArrayView&) = delete;
  SafeArrayView& operator=(const SafeArrayView&) = delete;

  [[nodiscard]] VARTYPE type() const noexcept { return type_; }
  [[nodiscard]] const std::vector<Bounds>& bounds() const noexcept { return bounds_; }
  /// The elements, those of one column side by side; as many as the bounds tell.
  template <class T>
  [[nodiscard]] const T* as() const noexcept {
    return static_cast<const T*>(data_);
  }

 private:
  SAFEARRAY* array_;
  VARTYPE type_;
  std::vector<Bounds> bounds_;
  void* data_ = nullptr;
};

}  // namespace mervane::automation
