#include "hosts/automation/safe_array.h"

#include <cstdint>
#include <limits>

namespace mervane::automation {
namespace {

/// What the array itself says; VT_EMPTY where it says nothing, as arrays that were put together by hand do.
VARTYPE ownTypeOf(SAFEARRAY* array) {
  VARTYPE type = VT_EMPTY;
  if (SUCCEEDED(SafeArrayGetVartype(array, &type))) return type;
  if ((array->fFeatures & FADF_BSTR) != 0) return VT_BSTR;
  if ((array->fFeatures & FADF_VARIANT) != 0) return VT_VARIANT;
  if ((array->fFeatures & FADF_DISPATCH) != 0) return VT_DISPATCH;
  if ((array->fFeatures & FADF_UNKNOWN) != 0) return VT_UNKNOWN;
  return VT_EMPTY;
}

bool isObject(VARTYPE type) {
  return type == VT_DISPATCH || type == VT_UNKNOWN;
}

/// Whether an element is bits alone, so that reading another type of its size does no harm.
bool isBits(VARTYPE type) {
  return sizeOfType(type) != 0 && type != VT_BSTR && type != VT_VARIANT && !isObject(type);
}

VARTYPE agreedType(SAFEARRAY* array, VARTYPE claimed) {
  const VARTYPE own = ownTypeOf(array);
  const VARTYPE type = claimed == VT_EMPTY ? own : claimed;
  const bool agree =
      own == type || (isObject(own) && isObject(type)) || ((own == VT_EMPTY || isBits(own)) && isBits(type));
  if (!agree || sizeOfType(type) == 0 || SafeArrayGetElemsize(array) != sizeOfType(type)) raise(runtime::typeMismatch);
  return type;
}

std::vector<Bounds> boundsOf(SAFEARRAY* array) {
  std::vector<Bounds> bounds;
  const UINT dimensions = SafeArrayGetDim(array);
  for (UINT dimension = 0; dimension < dimensions; ++dimension) {
    // The platform keeps the last dimension first. Its own answer for an upper bound wraps around.
    const SAFEARRAYBOUND& one = array->rgsabound[dimensions - 1 - dimension];
    const std::int64_t upper = std::int64_t{one.lLbound} + one.cElements - 1;
    if (upper < std::numeric_limits<std::int32_t>::min() || upper > std::numeric_limits<std::int32_t>::max()) {
      raise(runtime::subscriptOutOfRange);
    }
    bounds.push_back({static_cast<std::int32_t>(one.lLbound), static_cast<std::int32_t>(upper)});
  }
  return bounds;
}

bool hasElements(const std::vector<Bounds>& bounds) {
  for (const Bounds& one : bounds) {
    if (one.count() == 0) return false;
  }
  return !bounds.empty();
}

}  // namespace

std::size_t sizeOfType(VARTYPE type) noexcept {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    case VT_DECIMAL:
      return sizeof(DECIMAL);
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return 0;
  }
}

SafeArrayView::SafeArrayView(SAFEARRAY* array, VARTYPE claimed)
    : array_(array), type_(agreedType(array, claimed)), bounds_(boundsOf(array)) {
  if (FAILED(SafeArrayAccessData(array_, &data_))) raise(runtime::outOfMemory);
  if (data_ == nullptr && hasElements(bounds_)) {
    SafeArrayUnaccessData(array_);
    raise(runtime::subscriptOutOfRange);
  }
}

SafeArrayView::~SafeArrayView() {
  SafeArrayUnaccessData(array_);
}

}  // namespace mervane::automation
